#pragma once

#include <QString>

#include <vector>

namespace tov::conformance {

/// What an SDK implementation must keep to.
struct Rule
{
    QString id;          ///< stays the same for ever
    QString group;       ///< the heading above it
    QString must;        ///< what it says
    QString consequence; ///< what an application sees otherwise; may be empty
};

/// The rules in the words and in the order of the guide's page "What an SDK implementation must guarantee".
const std::vector<Rule>& rules();

} // namespace tov::conformance

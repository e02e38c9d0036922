#pragma once

#include "conformance/bench/bench.h"

#include <string_view>
#include <vector>

namespace tov::conformance {

/// How a rule is looked at.
struct Check
{
    std::string_view rule; ///< its id
    /// Looks whether it is kept; throws a verdict. What else it throws is a finding too. Null when it cannot be seen.
    Seen (*look)(Bench&) = nullptr;
    const char* whyNot = nullptr; ///< where it cannot be seen from outside
};

/// One for each rule.
const std::vector<Check>& checks();

} // namespace tov::conformance

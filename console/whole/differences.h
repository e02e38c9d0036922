#pragma once

#include <QJsonObject>

#include <string>
#include <vector>

namespace tov::console {

/// A place in which two documents differ, with what each has there as people read it.
struct Difference
{
    std::string path; // such as "settings/ulk-power/rf-power"
    std::string a;
    std::string b;
};

/// In which of the instruments' parts two documents differ. When and by what they were read, readings and the
/// instrument's own figures do not count.
std::vector<Difference> differencesBetween(const QJsonObject& a, const QJsonObject& b);

} // namespace tov::console

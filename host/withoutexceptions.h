#pragma once

#include <QDebug>

#include <exception>

namespace tov::host {

/// Does `thing` where nobody can be told what it throws: that becomes a warning, which begins with `when`. An SDK may
/// throw anything.
template <typename Thing>
void withoutExceptions(const char* when, Thing thing)
try {
    thing();
} catch (const std::exception& error) {
    qWarning("%s: %s", when, error.what());
} catch (...) {
    qWarning("%s: something went wrong", when);
}

} // namespace tov::host

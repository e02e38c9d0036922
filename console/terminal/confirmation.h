#pragma once

#include <string>

namespace tov::console {

/// Asks on a terminal whether to go on with what cannot be undone, such as "erase the memory". Throws `Failure` if not,
/// and `BadUse` where nobody can be asked.
void askWhetherTo(const std::string& act);

} // namespace tov::console

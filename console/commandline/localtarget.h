#pragma once

#include "console/commandline/command.h"
#include "tools/files/localfile.h"

namespace tov::console {

/// Adds to `command` the argument FILE and the option that fill `target`.
void addLocalTarget(Command& command, LocalTarget& target, bool required = true);

} // namespace tov::console

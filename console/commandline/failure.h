#pragma once

#include "console/commandline/exitstatus.h"

#include <string>

namespace tov::console {

/// Says on standard error, in one line whatever a library put into it, why a command failed, and gives `status` back.
ExitStatus fail(ExitStatus status, std::string line);

} // namespace tov::console

#pragma once

#include "console/commandline/exitstatus.h"

#include <string>

namespace tov::console {

/// Says on standard error, in one line and without control characters whatever a library put into it, why a command
/// failed, and gives `status` back. `asJson` makes the line an object, with the number of the command if it has one.
ExitStatus fail(ExitStatus status, std::string line, bool asJson = false, int command = 0);

/// The same for the exception that is being handled, whose type gives the status.
ExitStatus failAsCaught(bool asJson = false);

} // namespace tov::console

#pragma once

#include "console/commandline/exitstatus.h"

namespace tov::console {

/// Runs one command line: answers go to standard output, errors as one line to standard error.
ExitStatus runServiceConsole(int argc, char** argv);

} // namespace tov::console

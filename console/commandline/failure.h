#pragma once

#include "console/commandline/exitstatus.h"

#include <string>

namespace tov::console {

/// How it is told that a command failed.
struct FailureForm
{
    bool json = false; ///< as an object instead of text
    int command = 0;   ///< its number, which the object has; none below 1
    std::string place; ///< where the command stands, which comes first in the text
};

/// Says on standard error why a command failed, by the exception that is being handled, and gives the status that the
/// type of it means. It is one line without control characters, whatever a library put into it.
ExitStatus failAsCaught(const FailureForm& form);

} // namespace tov::console

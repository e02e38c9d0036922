#pragma once

#include "console/commands/commands.h"
#include "console/workbench.h"

#include <string>
#include <vector>

namespace tov::console {

/// Which commands and options a command line has.
enum class CommandSet {
    Program, ///< all of them
    Shell,   ///< what makes sense while the shell keeps its instrument
};

/// A command line that was understood.
struct Understood
{
    ChosenCommand command; // empty: everything is said already, as for --help
    Options options;
};

/// Understands `arguments`, the words behind the program's name. Throws `CommandError` (BadUse).
Understood understand(const std::vector<std::string>& arguments, CommandSet commands);

/// The words that can stand in the place of the last of `words`, which may be empty; each begins with it. The others
/// are what was typed before it.
std::vector<std::string> completions(const std::vector<std::string>& words, CommandSet commands);

} // namespace tov::console

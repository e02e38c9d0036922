#pragma once

#include <string>
#include <vector>

namespace tov::console {

/// What follows the program's name on its command line, in UTF-8 on every platform.
std::vector<std::string> programArguments(int argc, char** argv);

} // namespace tov::console

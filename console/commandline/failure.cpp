#include "console/commandline/failure.h"

#include <iostream>

namespace tov::console {

ExitStatus fail(ExitStatus status, std::string line)
{
    for (char& character : line)
        if (character == '\n')
            character = ' ';
    std::cerr << "service-console: " << line << "\n";
    return status;
}

} // namespace tov::console

#pragma once

#include <iostream>
#include <string>

namespace tov::testing {

/// What the programs of this folder take: --long and --json FILE.
struct CommandLine
{
    bool isLong = false;
    std::string json;
    bool isUnderstood = true;

    CommandLine(int count, char** arguments)
    {
        for (int i = 1; i < count; ++i) {
            const std::string argument = arguments[i];
            if (argument == "--long")
                isLong = true;
            else if (argument == "--json" && i + 1 < count)
                json = arguments[++i];
            else
                isUnderstood = false;
        }
        if (!isUnderstood)
            std::cerr << "usage: [--long] [--json FILE]\n";
    }
};

} // namespace tov::testing

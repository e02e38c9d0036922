#include "console/commandline/arguments.h"

#include <QString>

#include <cstddef>
#include <memory>
#include <span>

#ifdef Q_OS_WIN
#include <windows.h>

#include <shellapi.h>
#endif

namespace tov::console {

#ifdef Q_OS_WIN

// argv has lost what the system's code page lacks.
std::vector<std::string> programArguments(int /*argc*/, char** /*argv*/)
{
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(CommandLineToArgvW(GetCommandLineW(), &count),
                                                              &LocalFree);
    std::vector<std::string> arguments;
    for (const LPWSTR word : std::span(words.get(), static_cast<std::size_t>(count)).subspan(1))
        arguments.push_back(QString::fromWCharArray(word).toStdString());
    return arguments;
}

#else

std::vector<std::string> programArguments(int argc, char** argv)
{
    const std::span given(argv, static_cast<std::size_t>(argc));
    return {given.begin() + 1, given.end()};
}

#endif

} // namespace tov::console

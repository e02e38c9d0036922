#include "console/serviceconsole.h"

#include "console/commandline/arguments.h"
#include "console/commandline/failure.h"
#include "console/commandline/manual.h"
#include "console/commands/commands.h"
#include "console/terminal/terminal.h"
#include "tools/errors.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <thread>

namespace tov::console {

namespace {

// Asked of the words, because those that make no command line are told in JSON too.
bool wantsJson(const Words& arguments)
{
    return std::ranges::find(arguments, "--json") != arguments.end();
}

// An answer that did not get out is no answer.
ExitStatus finish(ExitStatus status)
{
    if (!std::cout.flush())
        throw OutputLost();
    return status;
}

ExitStatus run(const Words& arguments)
{
    Options options;
    const Command::Action action = understand(allCommands(CommandSet::Program, options), arguments);
    ConsoleSession console(options);
    const ExitStatus status = action(console);
    console.keep();
    console.output().print();
    return finish(status);
}

// What a shell's completion asks for: a line for every word that fits. Who waits for it is at a prompt, so an
// instrument that takes long to open is given up.
ExitStatus complete(const Words& words)
{
    std::thread([] {
        std::this_thread::sleep_for(std::chrono::seconds(3));
        std::_Exit(static_cast<int>(ExitStatus::Success));
    }).detach();
    Options options;
    std::optional<ConsoleSession> console;
    const auto opened = [&]() -> ConsoleSession& { return console ? *console : console.emplace(options); };
    for (const std::string& word : completions(allCommands(CommandSet::Program, options), words, opened))
        std::cout << word << "\n";
    return finish(ExitStatus::Success);
}

} // namespace

ExitStatus runServiceConsole(int argc, char** argv)
{
    prepareTerminal();
    const Words arguments = programArguments(argc, argv);
    try {
        const std::string first = arguments.empty() ? "" : arguments.front();
        if (first == "__complete")
            return complete({arguments.begin() + 1, arguments.end()});
        if (first == "__manual" && arguments.size() == 3) { // what the build calls
            Options options;
            writeManual(allCommands(CommandSet::Program, options), arguments[1], arguments[2]);
            return ExitStatus::Success;
        }
        return run(arguments);
    } catch (...) {
        return failAsCaught({.json = wantsJson(arguments), .place = {}});
    }
}

} // namespace tov::console

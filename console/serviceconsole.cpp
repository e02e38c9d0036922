#include "console/serviceconsole.h"

#include "console/commandline/arguments.h"
#include "console/commandline/failure.h"
#include "console/commands/commands.h"
#include "console/errors.h"
#include "console/terminal/terminal.h"

#include <algorithm>
#include <iostream>
#include <string>

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
    if (!action)
        return finish(ExitStatus::Success);
    ConsoleSession console(options);
    const ExitStatus status = action(console);
    console.keep();
    console.output().print();
    return finish(status);
}

// What the shell's completion asks for: a line for every word that fits.
ExitStatus complete(const Words& words)
{
    Options options;
    for (const std::string& word : completions(allCommands(CommandSet::Program, options), words))
        std::cout << word << "\n";
    return finish(ExitStatus::Success);
}

} // namespace

ExitStatus runServiceConsole(int argc, char** argv)
{
    prepareTerminal();
    Words arguments = programArguments(argc, argv);
    try {
        if (arguments.empty() || arguments.front() != "__complete")
            return run(arguments);
        arguments.erase(arguments.begin());
        return complete(arguments);
    } catch (...) {
        return failAsCaught(wantsJson(arguments));
    }
}

} // namespace tov::console

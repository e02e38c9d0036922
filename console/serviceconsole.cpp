#include "console/serviceconsole.h"

#include "console/commandline/arguments.h"
#include "console/commandline/failure.h"
#include "console/commands/commands.h"
#include "console/terminal/terminal.h"

#include <iostream>
#include <string>

namespace tov::console {

namespace {

// An answer that did not get out is no answer.
ExitStatus finish(ExitStatus status)
{
    return std::cout.flush() ? status : fail(ExitStatus::InternalError, "cannot write to standard output");
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
try {
    prepareTerminal();
    Words arguments = programArguments(argc, argv);
    if (!arguments.empty() && arguments.front() == "__complete") {
        arguments.erase(arguments.begin());
        return complete(arguments);
    }
    return run(arguments);
} catch (const Failure& error) {
    return fail(ExitStatus::Failure, error.what());
} catch (const BadUse& error) {
    return fail(ExitStatus::BadUse, error.what());
} catch (const std::exception& error) {
    return fail(ExitStatus::InternalError, std::string("internal error: ") + error.what());
} catch (...) { // of a provider's
    return fail(ExitStatus::InternalError, "internal error");
}

} // namespace tov::console

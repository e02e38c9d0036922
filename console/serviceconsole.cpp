#include "console/serviceconsole.h"

#include "console/arguments.h"
#include "console/commandline.h"
#include "console/failure.h"
#include "console/terminal.h"
#include "console/workbench.h"

#include <iostream>
#include <string>
#include <vector>

namespace tov::console {

namespace {

// An answer that did not get out is no answer.
ExitStatus finish(ExitStatus status)
{
    return std::cout.flush() ? status : fail(ExitStatus::InternalError, "cannot write to standard output");
}

ExitStatus run(const Understood& understood)
{
    if (!understood.command)
        return finish(ExitStatus::Success);
    Workbench workbench(understood.options);
    const ExitStatus status = understood.command(workbench);
    workbench.keep();
    workbench.output().print();
    return finish(status);
}

// What the shell's completion asks for: a line for every word that fits.
ExitStatus complete(const std::vector<std::string>& words)
{
    for (const std::string& word : completions(words, CommandSet::Program))
        std::cout << word << "\n";
    return finish(ExitStatus::Success);
}

} // namespace

ExitStatus runServiceConsole(int argc, char** argv)
try {
    prepareTerminal();
    std::vector<std::string> arguments = programArguments(argc, argv);
    if (!arguments.empty() && arguments.front() == "__complete") {
        arguments.erase(arguments.begin());
        return complete(arguments);
    }
    return run(understand(arguments, CommandSet::Program));
} catch (const CommandError& error) {
    return fail(error.status(), error.what());
} catch (const std::exception& error) {
    return fail(ExitStatus::InternalError, std::string("internal error: ") + error.what());
}

} // namespace tov::console

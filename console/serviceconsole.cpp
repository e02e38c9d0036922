#include "console/serviceconsole.h"

#include "console/commands/commands.h"
#include "console/workbench.h"
#include "service/version.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace tov::console {

namespace {

constexpr auto exitStatuses =
    "Exit status:\n"
    "  0  done\n"
    "  1  the instrument lacks the control or did not do what was asked, or a file cannot be used\n"
    "  2  unknown command or control, or a malformed value; nothing was changed\n"
    "  3  the program itself failed\n";

// Errors are one line, whatever a library put into its message.
ExitStatus fail(ExitStatus status, std::string line)
{
    for (char& character : line)
        if (character == '\n')
            character = ' ';
    std::cerr << "service-console: " << line << "\n";
    return status;
}

std::string commandsOf(const CLI::App& app)
{
    std::string names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.append(names.empty() ? "" : ", ").append(command->get_name());
    return names;
}

// The innermost command that was named, and how it was called.
std::pair<const CLI::App*, std::string> calledCommand(const CLI::App& app)
{
    const CLI::App* innermost = &app;
    std::string called = app.get_name();
    while (!innermost->get_subcommands().empty()) {
        innermost = innermost->get_subcommands().front();
        called.append(" ").append(innermost->get_name());
    }
    return {innermost, called};
}

// What is wrong with a command line that names no complete command, or more than one.
std::string explain(const CLI::App& app)
{
    const auto [innermost, called] = calledCommand(app);
    const std::string choice = commandsOf(*innermost);
    const std::vector<std::string> unknown = app.remaining(true);

    if (unknown.empty())
        return "a command is missing after '" + called + "'; there are " + choice;
    if (!choice.empty())
        return "unknown command '" + unknown.front() + "' after '" + called + "'; there are " + choice;
    return "unexpected '" + unknown.front() + "'; see '" + called + " --help'";
}

// An answer that did not get out is no answer.
ExitStatus finish(ExitStatus status)
{
    return std::cout.flush() ? status : fail(ExitStatus::InternalError, "cannot write to standard output");
}

ExitStatus runChosen(const ChosenCommand& chosen, const Options& options)
{
    Workbench workbench(options);
    const ExitStatus status = chosen(workbench);
    workbench.keep();
    workbench.output().print();
    return finish(status);
}

} // namespace

ExitStatus runServiceConsole(int argc, char** argv)
try {
    CLI::App app("Works with the service functions of a vector network analyser.", "service-console");
    app.footer(exitStatuses);
    app.set_version_flag("--version", devices::service::version);
    app.require_subcommand(0, 1);
    app.fallthrough();

    Options options;
    app.add_flag_callback(
        "--json", [&options] { options.form = Output::Form::Json; }, "Answer in JSON on standard output");
    app.add_option("--state", options.stateFile, "Use the instrument that is kept in FILE, a new one if there is none")
        ->type_name("FILE")
        ->check([](const std::string& file) { return file.empty() ? "a file name is needed" : std::string(); });
    app.add_option("--missing", options.missing, "Let the simulated instrument lack CONTROL; may be repeated")
        ->type_name("CONTROL")
        ->allow_extra_args(false);

    ChosenCommand chosen;
    addInfoCommand(app, chosen);
    addProbeCommand(app, chosen);
    addFilesCommand(app, chosen);
    addMemoryCommand(app, chosen);
    addPotsCommand(app, chosen);
    addSerialCommand(app, chosen);
    addUsbCommand(app, chosen);
    addTermsCommand(app, chosen);
    addLoLeakageCommand(app, chosen);
    addYqCommand(app, chosen);
    addMonitorCommand(app, chosen);
    addDemoCommand(app, chosen);

    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& helpOrVersion) {
        app.exit(helpOrVersion);
        return finish(ExitStatus::Success);
    } catch (const CLI::ExtrasError&) {
        return fail(ExitStatus::BadUse, explain(app));
    } catch (const CLI::ParseError& error) {
        return fail(ExitStatus::BadUse, std::string(error.what()) + "; see '" + calledCommand(app).second + " --help'");
    }
    if (!chosen)
        return fail(ExitStatus::BadUse, explain(app));
    return runChosen(chosen, options);
} catch (const CommandError& error) {
    return fail(error.status(), error.what());
} catch (const std::exception& error) {
    return fail(ExitStatus::InternalError, std::string("internal error: ") + error.what());
}

} // namespace tov::console

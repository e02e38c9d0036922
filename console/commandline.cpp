#include "console/commandline.h"

#include "console/tuning.h"
#include "service/version.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <utility>

namespace tov::console {

namespace {

constexpr auto exitStatuses =
    "Exit status:\n"
    "  0  done\n"
    "  1  the instrument lacks the control or did not do what was asked, or a file cannot be used\n"
    "  2  unknown command or control, or a malformed value; nothing was changed\n"
    "  3  the program itself failed\n";

void addCommands(CLI::App& app, ChosenCommand& chosen)
{
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
    addIfswCommand(app, chosen);
    addPowerCalCommand(app, chosen);
    addCorrectionsCommand(app, chosen);
    addCalibrationCommand(app, chosen);
    addTemperatureCommand(app, chosen);
    addTuneCommand(app, chosen);
    addMonitorCommand(app, chosen);
}

void declare(CLI::App& app, Understood& understood, CommandSet commands)
{
    app.name("service-console");
    app.require_subcommand(0, 1);
    app.fallthrough();
    app.add_flag_callback(
        "--json", [&understood] { understood.options.form = Output::Form::Json; }, "Answer in JSON on standard output");
    addCommands(app, understood.command);
    if (commands == CommandSet::Shell)
        return;

    app.footer(exitStatuses);
    app.set_version_flag("--version", devices::service::version);
    app.add_option("--state", understood.options.stateFile,
                   "Use the instrument that is kept in FILE, a new one if there is none")
        ->type_name("FILE")
        ->check([](const std::string& file) { return file.empty() ? "a file name is needed" : std::string(); });
    app.add_option("--missing", understood.options.missing,
                   "Let the simulated instrument lack CONTROL; may be repeated")
        ->type_name("CONTROL")
        ->allow_extra_args(false);
    addShellCommand(app, understood.command);
    addDemoCommand(app, understood.command);
}

std::vector<std::string> subcommandsOf(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* command :
         app.get_subcommands([](const CLI::App* inner) { return !inner->get_name().empty(); }))
        names.push_back(command->get_name());
    return names;
}

// Also those of option groups, which count as subcommands without a name.
void addOptions(const CLI::App& app, std::vector<std::string>& options)
{
    for (const CLI::Option* const option : app.get_options())
        for (const std::string& name : option->get_lnames())
            options.push_back("--" + name);
    for (const CLI::App* const group :
         app.get_subcommands([](const CLI::App* inner) { return inner->get_name().empty(); }))
        addOptions(*group, options);
}

const CLI::App* subcommandNamed(const CLI::App& app, const std::string& name)
{
    const auto named = app.get_subcommands([&](const CLI::App* command) { return command->get_name() == name; });
    return named.empty() ? nullptr : named.front();
}

bool takesValue(const CLI::App& app, const std::string& option)
{
    const CLI::Option* const declared = app.get_option_no_throw(option);
    return declared != nullptr && declared->get_items_expected_max() > 0;
}

std::string listed(const std::vector<std::string>& names)
{
    std::string list;
    for (const std::string& name : names)
        list.append(list.empty() ? "" : ", ").append(name);
    return list;
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
    const std::string choice = listed(subcommandsOf(*innermost));
    const std::vector<std::string> unknown = app.remaining(true);

    if (unknown.empty())
        return "a command is missing after '" + called + "'; there are " + choice;
    if (!choice.empty())
        return "unknown command '" + unknown.front() + "' after '" + called + "'; there are " + choice;
    return "unexpected '" + unknown.front() + "'; see '" + called + " --help'";
}

std::vector<std::string> controlNames()
{
    std::vector<std::string> names;
    names.reserve(host::controls::all.size());
    for (const host::ControlName& control : host::controls::all)
        names.emplace_back(control.name);
    return names;
}

// What can stand behind 'tune COMMAND' and its first arguments.
std::vector<std::string> tuneChoices(const std::string& command, const std::vector<std::string>& arguments)
{
    std::vector<std::string> names;
    if (arguments.empty()) {
        for (const TuneModule& module : tuneModules())
            if (command != "reset" || module.reset)
                names.emplace_back(module.control->name);
        return names;
    }
    const TuneModule& module = tuneModuleNamed(arguments[0]);
    if (arguments.size() == 1 && (command == "get" || command == "set")) {
        for (const TuneSetting& setting : module.settings)
            if (command == "get" || setting.write)
                names.push_back(setting.name);
    } else if (arguments.size() == 1 && command == "load-table") {
        for (const TuneTable& table : module.tables)
            names.push_back(table.name);
    } else if (arguments.size() == 2 && command == "set") {
        names = tuneSettingNamed(module, arguments[1]).choices;
    }
    return names;
}

// What can stand behind the command `called` and its first arguments, as far as it can be listed.
std::vector<std::string> choices(const std::vector<std::string>& called, const std::vector<std::string>& arguments)
{
    if (called.size() == 2 && called[0] == "tune")
        return tuneChoices(called[1], arguments);
    if (called == std::vector<std::string>{"probe"} && arguments.empty())
        return controlNames();
    if (called == std::vector<std::string>{"lo-leakage", "set"} && arguments.empty())
        return tuneChoices("set", {"lo-leakage", "lo-leakage"});
    if (called.size() == 2 && called[0] == "yq" && arguments.empty())
        return tuneChoices(called[1], {"yq-synthesis"});
    return {};
}

// Behind a wrong name nothing fits.
std::vector<std::string> choicesIfAny(const std::vector<std::string>& called, const std::vector<std::string>& arguments)
try {
    return choices(called, arguments);
} catch (const CommandError&) {
    return {};
}

} // namespace

Understood understand(const std::vector<std::string>& arguments, CommandSet commands)
{
    Understood understood;
    CLI::App app("Works with the service functions of a vector network analyser.");
    declare(app, understood, commands);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::Success& helpOrVersion) {
        app.exit(helpOrVersion);
        understood.command = nullptr;
        return understood;
    } catch (const CLI::ExtrasError&) {
        throw CommandError(ExitStatus::BadUse, explain(app));
    } catch (const CLI::ParseError& error) {
        throw CommandError(ExitStatus::BadUse,
                           std::string(error.what()) + "; see '" + calledCommand(app).second + " --help'");
    }
    if (!understood.command)
        throw CommandError(ExitStatus::BadUse, explain(app));
    return understood;
}

std::vector<std::string> completions(const std::vector<std::string>& words, CommandSet commands)
{
    Understood understood;
    CLI::App app;
    declare(app, understood, commands);

    const CLI::App* command = &app;
    std::vector<std::string> called;
    std::vector<std::string> arguments;
    bool isValue = false; // of the option before
    std::string option;
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        if (isValue) {
            isValue = false;
        } else if (words[i].starts_with("--")) {
            option = words[i];
            isValue = takesValue(app, option) || takesValue(*command, option);
        } else if (const CLI::App* const inner = subcommandNamed(*command, words[i]);
                   arguments.empty() && inner != nullptr) {
            command = inner;
            called.push_back(words[i]);
        } else {
            arguments.push_back(words[i]);
        }
    }

    const std::string begun = words.empty() ? "" : words.back();
    std::vector<std::string> all;
    if (isValue) {
        all = option == "--missing" ? controlNames() : std::vector<std::string>();
    } else if (begun.starts_with("-")) {
        for (const CLI::App* const with : std::initializer_list<const CLI::App*>{&app, command})
            addOptions(*with, all);
    } else {
        all = subcommandsOf(*command);
        if (all.empty())
            all = choicesIfAny(called, arguments);
    }
    std::erase_if(all, [&](const std::string& word) { return !word.starts_with(begun); });
    std::ranges::sort(all);
    all.erase(std::ranges::unique(all).begin(), all.end());
    return all;
}

} // namespace tov::console

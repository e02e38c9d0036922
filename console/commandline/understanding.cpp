#include "console/commandline/command.h"

#include "console/errors.h"

// Takes seconds to compile, so no other source includes it.
#include <CLI/CLI.hpp>

namespace tov::console {

namespace {

/// Declares a parameter to the parser, by what it fills.
struct Declaration
{
    CLI::App& app;
    const Command::Parameter& parameter;

    void operator()(bool* given) const { app.add_flag(parameter.name, *given, parameter.help); }
    void operator()(int* count) const { add(*count)->check(CLI::PositiveNumber); }
    void operator()(std::string* value) const
    {
        add(*value)->check([message = parameter.mustNotBeEmpty](const std::string& text) {
            return text.empty() ? message : std::string();
        });
    }
    void operator()(std::optional<std::string>* value) const { add(*value); }
    void operator()(std::vector<std::string>* values) const { add(*values)->allow_extra_args(false); }
    void operator()(const Command::Version& version) const { app.set_version_flag(parameter.name, version.text); }

private:
    template <typename Value>
    CLI::Option* add(Value& value) const
    {
        return app.add_option(parameter.name, value, parameter.help)
            ->required(parameter.required)
            ->type_name(parameter.type);
    }
};

void declare(CLI::App& app, const std::vector<Command::Parameter>& parameters)
{
    for (const auto& parameter : parameters)
        std::visit(Declaration{app, parameter}, parameter.target);
}

void declare(CLI::App& app, const Command& command)
{
    declare(app, command.parameters());
    for (const auto& group : command.groups()) {
        CLI::Option_group& declared = *app.add_option_group(group.name, group.help);
        declare(declared, group.options);
        declared.require_option(1);
    }
    for (const auto& inner : command.commands())
        declare(*app.add_subcommand(inner->name(), inner->help()), *inner);
    app.footer(command.footer()); // last, because the commands behind this one would take it over
}

/// The innermost command that was named, and how it was called.
struct Called
{
    Called(const CLI::App& app, const Command& program)
        : command(&program)
        , name(program.name())
    {
        for (const CLI::App* named = &app; !named->get_subcommands().empty();) {
            named = named->get_subcommands().front();
            command = command->find(named->get_name());
            name.append(" ").append(named->get_name());
        }
    }

    const Command* command;
    std::string name;
};

// What is wrong with a command line that names no complete command, or more than one.
std::string explain(const CLI::App& app, const Called& called)
{
    std::string choice;
    for (const auto& inner : called.command->commands())
        choice.append(choice.empty() ? "" : ", ").append(inner->name());
    const Words unknown = app.remaining(true);

    if (unknown.empty())
        return "a command is missing after '" + called.name + "'; there are " + choice;
    if (!choice.empty())
        return "unknown command '" + unknown.front() + "' after '" + called.name + "'; there are " + choice;
    return "unexpected '" + unknown.front() + "'; see '" + called.name + " --help'";
}

} // namespace

Command::Action understand(const Command& program, const Words& arguments)
{
    CLI::App app(program.help(), program.name());
    app.require_subcommand(0, 1);
    app.fallthrough();
    declare(app, program);
    for (const std::string& word : arguments) // the parser would take the next word for the value
        if (word.starts_with("--") && word.ends_with('='))
            throw BadUse("nothing stands behind '" + word + "'; see '" + program.name() + " --help'");
    try {
        app.parse(Words(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::Success& helpOrVersion) {
        app.exit(helpOrVersion);
        return {};
    } catch (const CLI::ExtrasError&) {
        throw BadUse(explain(app, Called(app, program)));
    } catch (const CLI::ParseError& error) {
        throw BadUse(std::string(error.what()) + "; see '" + Called(app, program).name + " --help'");
    }
    const Called called(app, program);
    if (!called.command->action())
        throw BadUse(explain(app, called));
    return called.command->action();
}

} // namespace tov::console

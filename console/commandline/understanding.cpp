#include "console/commandline/command.h"

#include "console/session/consolesession.h"
#include "tools/errors.h"
#include "tools/text/number.h"
#include "tools/text/suggestions.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <sstream>

// Takes seconds to compile, so no other source includes it.
#include <CLI/CLI.hpp>

namespace tov::console {

namespace {

// The parser takes numbers as -inf for options, unless something stands in front of them.
constexpr char noOption = '\x1f';

std::string marked(const std::string& word)
{
    return word.starts_with('-') && parseReal<double>(word) ? noOption + word : word;
}

std::string unmarked(std::string word)
{
    if (word.starts_with(noOption))
        word.erase(0, 1);
    return word;
}

/// Help in which each command names the options of the program too.
class Help : public CLI::Formatter
{
public:
    std::string make_subcommands(const CLI::App* app, CLI::AppFormatMode mode) const override
    {
        const CLI::App* program = app;
        while (program->get_parent() != nullptr)
            program = program->get_parent();
        std::string lines = Formatter::make_subcommands(app, mode);
        if (program == app || app->get_name().empty() || mode != CLI::AppFormatMode::Normal)
            return lines;
        return lines + make_group("Global options", false, program->get_options([](const CLI::Option* option) {
                   return option->nonpositional() && option->get_name() != "--help"
                          && option->get_name() != "--version";
               }));
    }
};

// What is wrong with a text that should be a whole number above 0.
std::string isCount(const std::string& text)
{
    const auto number = parseNumber<int>(unmarked(text));
    return number && *number > 0
               ? std::string()
               : quoted(unmarked(text)) + " is no count: use " + wholeNumbers(1, std::numeric_limits<int>::max());
}

/// Declares a parameter to the parser, by what it fills.
struct Declaration
{
    CLI::App& app;
    const Command::Parameter& parameter;

    void operator()(bool* given) const { app.add_flag(parameter.name, *given, parameter.help); }
    void operator()(int* count) const { add(*count)->check(isCount); }
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
            ->type_name(parameter.type)
            ->transform(unmarked);
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
    explicit Called(const Command& program)
        : command(&program)
        , name(program.name())
    {
    }
    Called(const CLI::App& app, const Command& program)
        : Called(program)
    {
        for (const CLI::App* named = &app; !named->get_subcommands().empty();) {
            named = named->get_subcommands().front();
            enter(named->get_name());
        }
    }

    void enter(const std::string& inner)
    {
        command = command->find(inner);
        name.append(" ").append(inner);
    }

    const Command* command;
    std::string name;
};

Words namesOf(const std::vector<std::unique_ptr<Command>>& commands)
{
    Words names;
    std::ranges::transform(commands, std::back_inserter(names), &Command::name);
    return names;
}

// That an option is unknown, if that is so.
void refuseUnknownOptions(const Words& remaining, const Called& called, const Command& program)
{
    const auto option = std::ranges::find_if(remaining, [](const auto& word) { return word.starts_with('-'); });
    if (option == remaining.end())
        return;
    const std::string name = option->substr(0, option->find('='));
    Words known = program.optionNames();
    std::ranges::copy(called.command->optionNames(), std::back_inserter(known));
    const std::string meant = closest(name, known);
    throw BadUse("unknown option " + quoted(name)
                 + (meant.empty() ? "; see '" + called.name + " --help'" : "; did you mean '" + meant + "'?"));
}

// What is wrong with a command line that names no complete command, or more than one.
std::string explain(const Words& remaining, const Called& called)
{
    const Words inner = namesOf(called.command->commands());
    if (remaining.empty()) {
        std::string choice;
        for (const std::string& name : inner)
            choice.append(choice.empty() ? "" : ", ").append(name);
        return "a command is missing after '" + called.name + "'; there are " + choice;
    }
    if (!inner.empty())
        return unknown("unknown command", remaining.front(), inner, " after '" + called.name + "'").what();
    return "unexpected " + quoted(remaining.front()) + "; see '" + called.name + " --help'";
}

} // namespace

Command::Action understand(const Command& program, const Words& arguments)
{
    CLI::App app(program.help(), program.name());
    app.formatter(std::make_shared<Help>());
    app.require_subcommand(0, 1);
    app.fallthrough();
    declare(app, program);
    for (const std::string& word : arguments) // the parser would take the next word for the value
        if (word.starts_with("--") && word.ends_with('='))
            throw BadUse("nothing stands behind " + quoted(word) + "; see '" + program.name() + " --help'");
    const auto remaining = [&] {
        Words words = app.remaining(true);
        std::ranges::transform(words, words.begin(), unmarked);
        return words;
    };
    try {
        Words words;
        std::ranges::transform(arguments.rbegin(), arguments.rend(), std::back_inserter(words), marked);
        app.parse(std::move(words));
    } catch (const CLI::Success& helpOrVersion) {
        std::ostringstream text;
        app.exit(helpOrVersion, text, text);
        return [said = text.str()](ConsoleSession& console) {
            console.output().answer(said, {{"text", QString::fromStdString(said)}});
            return ExitStatus::Success;
        };
    } catch (const CLI::ParseError& error) {
        const Called called(app, program);
        refuseUnknownOptions(remaining(), called, program);
        if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr)
            throw BadUse(explain(remaining(), called));
        throw BadUse(std::string(error.what()) + "; see '" + called.name + " --help'");
    }
    const Called called(app, program);
    if (!called.command->action())
        throw BadUse(explain(remaining(), called));
    return called.command->action();
}

Command::Action helpWith(const Command& program, const Words& path)
{
    Called called(program);
    Words words;
    for (const std::string& name : path) {
        if (name.empty())
            continue;
        if (called.command->find(name) == nullptr)
            throw BadUse(explain({name}, called));
        called.enter(name);
        words.push_back(name);
    }
    words.emplace_back("--help");
    return understand(program, words);
}

} // namespace tov::console

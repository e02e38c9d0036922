#pragma once

#include "console/commandline/exitstatus.h"

#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace tov::console {

class ConsoleSession;

using Words = std::vector<std::string>;

/// Gives what knows the instrument of a command line.
using ConsoleOf = std::function<ConsoleSession&()>;

/// The words to offer in a place of the command line behind the arguments that stand before it; those that only the
/// instrument knows, it is opened for. Behind a wrong argument it may throw, and nothing is offered.
class Choices
{
public:
    Choices() = default;

    // Implicit, so that a function can simply be given.
    template <std::invocable<const Words&> Choose>
    Choices(const Choose& choose) // NOLINT(google-explicit-constructor)
        : m_choose([choose](const Words& before, const ConsoleOf&) { return choose(before); })
    {
    }
    template <std::invocable<const Words&, ConsoleSession&> Choose>
    Choices(const Choose& choose) // NOLINT(google-explicit-constructor)
        : m_choose([choose](const Words& before, const ConsoleOf& console) { return choose(before, console()); })
    {
    }

    Words operator()(const Words& before, const ConsoleOf& console) const
    {
        return m_choose ? m_choose(before, console) : Words();
    }

private:
    std::function<Words(const Words& before, const ConsoleOf& console)> m_choose;
};

/// One command of the command line: what it takes, what it does, and the commands that are called behind its name.
class Command
{
public:
    using Action = std::function<ExitStatus(ConsoleSession&)>;

    /// What is said instead of doing anything.
    struct Version
    {
        std::string text;
    };
    /// What understanding the command line fills; a number is a whole one above 0.
    using Target =
        std::variant<bool*, int*, std::string*, std::optional<std::string>*, std::vector<std::string>*, Version>;

    /// A word that the command takes: an option when its name begins with --, otherwise an argument.
    struct Parameter
    {
        std::string name;
        Target target;
        // NOLINTBEGIN(readability-redundant-member-init): without, gcc takes what is left out for forgotten
        std::string type = {};
        std::string help = {};
        Choices choices = {};
        bool required = false;
        std::string mustNotBeEmpty = {}; ///< what to say when it is, unless it may be
        // NOLINTEND(readability-redundant-member-init)

        bool isOption() const { return name.starts_with("--"); }
        bool takesValue() const
        {
            return !std::holds_alternative<bool*>(target) && !std::holds_alternative<Version>(target);
        }
    };

    /// Options of which exactly one is given.
    struct OneOf
    {
        std::string name;
        std::string help;
        std::vector<Parameter> options;
    };

    Command(std::string name, std::string help)
        : m_name(std::move(name))
        , m_help(std::move(help))
    {
    }

    /// Adds a command that is called behind this one's name; it stays where it is.
    Command& add(std::string name, std::string help);

    /// An argument, in its place.
    Command& argument(std::string name, std::string& value, std::string type, std::string help, Choices choices = {});

    /// An argument that may be left out, or an option.
    Command& optional(std::string name, Target target, std::string type, std::string help, Choices choices = {});

    Command& flag(std::string name, bool& given, std::string help);
    Command& oneOf(OneOf group);

    /// Takes what the others cannot declare.
    Command& takes(Parameter parameter);

    /// Lines below the command's help.
    Command& footer(std::string lines);

    /// What the command does: `run(console, *arguments...)` gives an `ExitStatus`, or nothing when it succeeded.
    template <typename Run, typename... Arguments>
    Command& runs(const Run& run, const std::shared_ptr<Arguments>&... arguments)
    {
        m_action = [run, arguments...](ConsoleSession& console) {
            if constexpr (std::is_void_v<std::invoke_result_t<Run, ConsoleSession&, const Arguments&...>>) {
                run(console, std::as_const(*arguments)...);
                return ExitStatus::Success;
            } else {
                return run(console, std::as_const(*arguments)...);
            }
        };
        return *this;
    }

    const std::string& name() const noexcept { return m_name; }
    const std::string& help() const noexcept { return m_help; }
    const std::string& footer() const noexcept { return m_footer; }
    const std::vector<Parameter>& parameters() const noexcept { return m_parameters; }
    const std::vector<OneOf>& groups() const noexcept { return m_groups; }
    const std::vector<std::unique_ptr<Command>>& commands() const noexcept { return m_commands; }
    const Action& action() const noexcept { return m_action; }

    /// Its name and its arguments, as a synopsis shows them.
    std::string synopsis() const;

    /// The names of its options, of which --help is one.
    Words optionNames() const;

    /// The option of this name; null when it has none.
    const Parameter* optionNamed(const std::string& name) const;

    /// The command of this name behind this one's; null when there is none.
    const Command* find(const std::string& name) const;

private:
    std::string m_name;
    std::string m_help;
    std::string m_footer;
    std::vector<Parameter> m_parameters;
    std::vector<OneOf> m_groups;
    std::vector<std::unique_ptr<Command>> m_commands;
    Action m_action;
};

/// Understands `arguments`, the words behind the program's name, and gives what the command does that they call, which
/// for --help is to say it. Throws `BadUse`.
Command::Action understand(const Command& program, const Words& arguments);

/// What `--help` behind these commands does. Throws `BadUse` when there is no such command.
Command::Action helpWith(const Command& program, const Words& path);

/// The words that can stand in the place of the last of `words`, which may be empty; each begins with it, or is
/// `localFiles`. The others are what was typed before it; options among them are understood.
Words completions(const Command& program, const Words& words, const ConsoleOf& console);

} // namespace tov::console

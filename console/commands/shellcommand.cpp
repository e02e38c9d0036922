#include "console/commands/commands.h"

#include "console/commandline/failure.h"
#include "console/notifications/notifications.h"
#include "console/terminal/interruption.h"
#include "console/terminal/prompt.h"
#include "console/terminal/shellwords.h"
#include "tools/text/number.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <memory>
#include <optional>
#include <thread>

namespace tov::console {

namespace {

struct Arguments
{
    bool stopOnError = false;
    bool noHistory = false;
};

/// What the shell's own commands change.
struct ShellState
{
    std::optional<Notifications> notifications;
    bool ended = false;
};

void switchNotifications(ConsoleSession& console, ShellState& state, const std::string& given)
{
    if (given != "on" && given != "off")
        throw BadUse("use 'notify on' or 'notify off'");
    if (given == "off")
        state.notifications.reset();
    else if (!state.notifications)
        state.notifications.emplace(console);
}

void offer(ConsoleSession& console, ShellState& state)
{
    console.offerControls();
    if (state.notifications)
        state.notifications.emplace(console); // of those too that were not there before
}

// Ctrl-C ends it, unless time passes at once.
void waitFor(ConsoleSession& console, const std::string& given)
{
    using Clock = std::chrono::steady_clock;

    const auto seconds = requireNumber<unsigned short>("seconds", given.empty() ? "1" : given);
    if (console.can(provider::ITestHooks::Ability::PassTime)) {
        console.passTime(std::chrono::seconds(seconds));
        return;
    }
    const auto end = Clock::now() + std::chrono::seconds(seconds);
    for (Interruption::came(); Clock::now() < end && !Interruption::came();) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        console.passOnNotices();
    }
}

Command shellCommands(Options& options, const std::shared_ptr<ShellState>& state);

// The commands that only a shell has; its help, its completion and its parser know them from here.
void addOwnCommands(Command& program, const std::shared_ptr<ShellState>& state)
{
    const auto argument = std::make_shared<std::string>();
    program.add("notify", "Print the notifications of the instrument as they come, or no longer")
        .argument("on|off", *argument, "", "Whether they are printed", [](const Words&) { return Words{"on", "off"}; })
        .runs(
            [state](ConsoleSession& console, const std::string& given) { switchNotifications(console, *state, given); },
            argument);
    program.add("release", "Have the instrument take its controls away").runs([](ConsoleSession& console) {
        console.releaseControls();
    });
    program.add("offer", "Have the instrument offer its controls again").runs([state](ConsoleSession& console) {
        offer(console, *state);
    });
    program.add("wait", "Let time pass, for the simulated instrument at once")
        .optional("SECONDS", argument.get(), "", "How long, 0 to 65535 seconds (1)")
        .runs(waitFor, argument);
    addHelpCommand(program, [] {
        Options unused;
        return shellCommands(unused, std::make_shared<ShellState>());
    });
    program.add("exit", "End the shell").runs([state](const ConsoleSession& /*console*/) { state->ended = true; });
}

Command shellCommands(Options& options, const std::shared_ptr<ShellState>& state)
{
    Command program = allCommands(CommandSet::Shell, options);
    addOwnCommands(program, state);
    return program;
}

/// Commands line by line on one instrument.
class Shell
{
public:
    Shell(ConsoleSession& console, const Arguments& arguments)
        : m_console(console)
        , m_stopOnError(arguments.stopOnError)
        , m_answerOptions(console.answerOptions())
        , m_prompt(
              "service-console> ", [this](const Words& words) { return completeLine(words); },
              arguments.noHistory ? std::nullopt : std::optional(History(History::usualFile())))
    {
    }

    /// How the first command ended that failed, unless somebody typed them.
    ExitStatus run()
    {
        ExitStatus first = ExitStatus::Success;
        while (!m_state->ended) {
            const auto line = m_prompt.read();
            if (!line)
                break;
            ++m_line;
            const ExitStatus status = runLine(*line);
            if (first == ExitStatus::Success)
                first = status;
            if (status != ExitStatus::Success && m_stopOnError)
                return first;
        }
        return m_prompt.isTerminal() ? ExitStatus::Success : first;
    }

private:
    Words completeLine(const Words& words)
    {
        Options options;
        return completions(shellCommands(options, m_state), words, [this]() -> ConsoleSession& { return m_console; });
    }

    ExitStatus runLine(const std::string& line)
    try {
        const Words words = next(line);
        return words.empty() ? ExitStatus::Success : runWords(words);
    } catch (const OutputLost&) {
        throw; // nobody reads on
    } catch (...) {
        // In a script the line is named, in JSON the command.
        const std::string place = m_prompt.isTerminal() ? "" : "line " + std::to_string(m_line) + ": ";
        return failAsCaught({.json = m_json, .command = m_command, .place = place});
    }

    // The words of a line, and the number of the command that they are, also when they cannot be read.
    Words next(const std::string& line)
    {
        ++m_command;
        m_json = m_answerOptions.json;
        Words words = wordsOf(line);
        if (words.empty())
            --m_command;
        m_json = m_json || std::ranges::find(words, "--json") != words.end();
        return words;
    }

    ExitStatus runWords(const Words& words)
    {
        if (std::ranges::find(words, "-") != words.end())
            throw BadUse("- is what the shell itself reads and writes; name a file");
        m_console.passOnNotices();
        Options options;
        static_cast<AnswerOptions&>(options) = m_answerOptions;
        const Command::Action action = understand(shellCommands(options, m_state), words);
        m_console.setAnswerOptions(options);
        Output& output = m_console.output();
        output.setCommand(m_command);
        output.answer({}, QJsonObject()); // of those that have none, and instead of what a command that failed left
        const ExitStatus status = action(m_console);
        m_console.keep();
        m_console.waitUntilQuiet(); // so that notifications come before the next command
        output.print();
        if (!std::cout.flush())
            throw OutputLost();
        return status;
    }

    ConsoleSession& m_console;
    const bool m_stopOnError;
    const std::shared_ptr<ShellState> m_state = std::make_shared<ShellState>();
    const AnswerOptions m_answerOptions; // which a line may add to
    Prompt m_prompt;
    int m_line = 0;
    int m_command = 0;   // its number
    bool m_json = false; // whether it was to answer so
};

std::string shellHelp()
{
    Command own("", "");
    addOwnCommands(own, std::make_shared<ShellState>());
    std::string lines = "Commands are those of service-console, and besides\n";
    for (const auto& command : own.commands())
        lines.append("  ").append(command->synopsis()).append("  ").append(command->help()).append("\n");
    return lines;
}

} // namespace

void addShellCommand(Command& program)
{
    const auto arguments = std::make_shared<Arguments>();
    program.add("shell", "Work on one instrument, command by command")
        .flag("--stop-on-error", arguments->stopOnError, "End at the first command that fails")
        .flag("--no-history", arguments->noHistory,
              "Neither call back the lines of other shells nor keep those of this one")
        .footer(shellHelp())
        .runs(
            [](ConsoleSession& console, const Arguments& given) {
                console.session(); // the shell is of no use without
                return Shell(console, given).run();
            },
            arguments);
}

} // namespace tov::console

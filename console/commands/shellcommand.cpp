#include "console/commands/commands.h"

#include "console/commandline/failure.h"
#include "console/notifications/notifications.h"
#include "console/terminal/prompt.h"
#include "console/text/number.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>

namespace tov::console {

namespace {

constexpr auto shellHelp = "Commands are those of service-console, and besides\n"
                           "  notify on|off   print the notifications of the instrument as they come\n"
                           "  release, offer  the instrument takes its controls away, and offers them again\n"
                           "  wait SECONDS    let time pass, for the simulated instrument at once\n"
                           "  help, exit\n";

/// Commands line by line on one instrument.
class Shell
{
public:
    explicit Shell(ConsoleSession& console)
        : m_console(console)
        , m_answerOptions(console.answerOptions())
        , m_prompt("service-console> ", completeLine)
    {
    }

    /// How the last command ended; commands that fail do not end the shell.
    ExitStatus run()
    {
        while (const auto line = m_prompt.read()) {
            const Words words = wordsOf(*line);
            if (words.empty() || words.front().starts_with("#"))
                continue;
            if (words.front() == "exit" || words.front() == "quit")
                break;
            try {
                m_status = runLine(words);
            } catch (...) {
                m_status = failAsCaught();
            }
        }
        return m_status;
    }

private:
    static Words completeLine(const Words& words)
    {
        Options options;
        Words fitting = completions(allCommands(CommandSet::Shell, options), words);
        const auto addFitting = [&](const Words& own) {
            std::ranges::copy_if(own, std::back_inserter(fitting),
                                 [&](const std::string& word) { return word.starts_with(words.back()); });
        };
        if (words.size() == 1)
            addFitting({"exit", "help", "notify", "offer", "release", "wait"});
        else if (words.size() == 2 && words[0] == "notify")
            addFitting({"on", "off"});
        return fitting;
    }

    ExitStatus runLine(const Words& words)
    {
        m_console.passOnNotices();
        if (runOwn(words))
            return ExitStatus::Success;
        Options options;
        static_cast<AnswerOptions&>(options) = m_answerOptions;
        const Command::Action action = understand(allCommands(CommandSet::Shell, options), words);
        if (!action)
            return ExitStatus::Success;
        m_console.setAnswerOptions(options);
        m_console.output().discard(); // what a command that failed left
        const ExitStatus status = action(m_console);
        m_console.keep();
        m_console.waitUntilQuiet(); // so that notifications come before the next command
        m_console.output().print();
        std::cout << std::flush;
        return status;
    }

    // Whether it was one of the shell's own commands.
    bool runOwn(const Words& words)
    {
        if (words.front() == "help") {
            std::cout << shellHelp << std::flush;
        } else if (words.front() == "notify") {
            if (words.size() != 2 || (words[1] != "on" && words[1] != "off"))
                throw BadUse("use 'notify on' or 'notify off'");
            if (words[1] == "off")
                m_notifications.reset();
            else if (!m_notifications)
                m_notifications.emplace(m_console);
        } else if (words == Words{"release"}) {
            m_console.releaseControls();
        } else if (words == Words{"offer"}) {
            m_console.offerControls();
            if (m_notifications)
                m_notifications.emplace(m_console); // of those too that were not there before
        } else if (words.front() == "wait") {
            const int seconds = words.size() == 2 ? requireNumber<int>("wait", words[1]) : 1;
            if (words.size() > 2 || seconds < 0)
                throw BadUse("use 'wait SECONDS'");
            m_console.passTime(std::chrono::seconds(seconds));
            m_console.keep();
        } else {
            return false;
        }
        return true;
    }

    ConsoleSession& m_console;
    const AnswerOptions m_answerOptions; // which a line may add to
    Prompt m_prompt;
    std::optional<Notifications> m_notifications;
    ExitStatus m_status = ExitStatus::Success;
};

} // namespace

void addShellCommand(Command& program)
{
    program.add("shell", "Work on one instrument, command by command")
        .footer(shellHelp)
        .runs([](ConsoleSession& console) {
            console.session(); // the shell is of no use without
            return Shell(console).run();
        });
}

} // namespace tov::console

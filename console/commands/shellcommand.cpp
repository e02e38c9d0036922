#include "console/commands/subcommand.h"

#include "console/commandline.h"
#include "console/failure.h"
#include "console/notifications.h"
#include "console/number.h"
#include "console/prompt.h"

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
                           "  wait SECONDS    let time pass for the simulated instrument\n"
                           "  help, exit\n";

/// Commands line by line on one instrument.
class Shell
{
public:
    explicit Shell(Workbench& workbench)
        : m_workbench(workbench)
        , m_prompt("service-console> ", completeLine)
    {
    }

    /// How the last command ended; commands that fail do not end the shell.
    ExitStatus run()
    {
        while (const auto line = m_prompt.read()) {
            const std::vector<std::string> words = wordsOf(*line);
            if (words.empty() || words.front().starts_with("#"))
                continue;
            if (words.front() == "exit" || words.front() == "quit")
                break;
            try {
                m_status = runLine(words);
            } catch (const CommandError& error) {
                m_status = fail(error.status(), error.what());
            }
        }
        return m_status;
    }

private:
    static const std::vector<std::string>& ownCommands()
    {
        static const std::vector<std::string> names = {"exit", "help", "notify", "offer", "release", "wait"};
        return names;
    }

    static const std::vector<std::string>& onOff()
    {
        static const std::vector<std::string> words = {"on", "off"};
        return words;
    }

    static std::vector<std::string> completeLine(const std::vector<std::string>& words)
    {
        std::vector<std::string> fitting = completions(words, CommandSet::Shell);
        if (words.size() == 1)
            appendFitting(fitting, ownCommands(), words.back());
        else if (words.size() == 2 && words[0] == "notify")
            appendFitting(fitting, onOff(), words.back());
        return fitting;
    }

    static void appendFitting(std::vector<std::string>& fitting, const std::vector<std::string>& words,
                              const std::string& begun)
    {
        std::ranges::copy_if(words, std::back_inserter(fitting),
                             [&](const std::string& word) { return word.starts_with(begun); });
    }

    ExitStatus runLine(const std::vector<std::string>& words)
    {
        if (runOwn(words))
            return ExitStatus::Success;
        const Understood understood = understand(words, CommandSet::Shell);
        if (!understood.command)
            return ExitStatus::Success;
        const auto restore = [form = m_workbench.output().form()](Output* output) { output->setForm(form); };
        const std::unique_ptr<Output, decltype(restore)> output(&m_workbench.output(), restore);
        if (understood.options.form == Output::Form::Json)
            output->setForm(Output::Form::Json);
        m_workbench.output().discard(); // what a command that failed left
        const ExitStatus status = understood.command(m_workbench);
        m_workbench.keep();
        m_workbench.instrument().waitUntilQuiet(); // so that notifications come before the next command
        m_workbench.output().print();
        std::cout << std::flush;
        return status;
    }

    // Whether it was one of the shell's own commands.
    bool runOwn(const std::vector<std::string>& words)
    {
        simulator::SimulatedInstrument& instrument = m_workbench.instrument();
        if (words.front() == "help") {
            std::cout << shellHelp << std::flush;
        } else if (words.front() == "notify") {
            if (words.size() != 2 || (words[1] != "on" && words[1] != "off"))
                throw CommandError(ExitStatus::BadUse, "use 'notify on' or 'notify off'");
            if (words[1] == "off")
                m_notifications.reset();
            else if (!m_notifications)
                m_notifications.emplace(m_workbench);
        } else if (words == std::vector<std::string>{"release"}) {
            m_workbench.session().releaseControls([&] { instrument.releaseControls(); });
        } else if (words == std::vector<std::string>{"offer"}) {
            m_workbench.session().offerControls([&] { instrument.offerControls(); });
            if (m_notifications)
                m_notifications.emplace(m_workbench); // of those too that were not there before
        } else if (words.front() == "wait") {
            const int seconds = words.size() == 2 ? requireNumber<int>("wait", words[1]) : 1;
            if (words.size() > 2 || seconds < 0)
                throw CommandError(ExitStatus::BadUse, "use 'wait SECONDS'");
            instrument.passTime(std::chrono::seconds(seconds));
            m_workbench.keep();
        } else {
            return false;
        }
        instrument.waitUntilQuiet();
        return true;
    }

    Workbench& m_workbench;
    Prompt m_prompt;
    std::optional<Notifications> m_notifications;
    ExitStatus m_status = ExitStatus::Success;
};

} // namespace

void addShellCommand(CLI::App& app, ChosenCommand& chosen)
{
    app.add_subcommand("shell", "Work on one instrument, command by command")->footer(shellHelp)->callback([&chosen] {
        chosen = [](Workbench& workbench) { return Shell(workbench).run(); };
    });
}

} // namespace tov::console

#include "console/commands/commands.h"

#include "console/notifications/notificationlines.h"
#include "console/notifications/watching.h"
#include "console/terminal/progress.h"
#include "console/terminal/terminal.h"
#include "console/text/number.h"
#include "service/calibration/sdkcalibrationcontrolwatcher.h"

#include <algorithm>
#include <mutex>
#include <optional>

namespace tov::console {

namespace {

using devices::service::SdkCalibrationControlHandle;
using devices::service::SdkCalibrationControlWatcher;

struct Arguments : WatchArguments
{
    std::string controller = "1";
};

const host::Control<SdkCalibrationControlHandle>& controllerNamed(const std::string& name)
{
    const auto number = parseNumber<unsigned int>(name);
    if (number == 1U)
        return host::controls::calibrationController1;
    if (number == 2U)
        return host::controls::calibrationController2;
    throw BadUse("there is no controller " + quoted(name) + "; there are 1, 2");
}

/// Shows every signal of a controller's watcher as a line, but on a terminal the progress of a save as a bar.
class Display
{
public:
    Display(ConsoleSession& console, std::string_view controller, CsvLog* log)
        : m_controller(controller)
        , m_showsBar(console.output().isText() && standardOutputIsTerminal() && standardErrorIsTerminal())
        , m_lines(console, log)
    {
    }

    void follow(SdkCalibrationControlHandle& handle)
    {
        const SdkCalibrationControlWatcher& watcher = m_watcher.emplace(handle);
        QObject::connect(&watcher, &SdkCalibrationControlWatcher::unitStatusChanged,
                         [this] { showLine("unit-status-changed"); });
        QObject::connect(&watcher, &SdkCalibrationControlWatcher::configurationChanged,
                         [this] { showLine("configuration-changed"); });
        QObject::connect(&watcher, &SdkCalibrationControlWatcher::saveProgressChanged,
                         [this](int percent) { showProgress(percent); });
    }

private:
    void showLine(std::string_view signal, std::initializer_list<double> numbers = {})
    {
        const std::lock_guard guard(m_mutex);
        m_bar.reset(); // ends its line
        m_lines.print(m_controller, signal, numbers);
    }

    void showProgress(int percent)
    {
        if (!m_showsBar) {
            showLine("save-progress", {static_cast<double>(percent)});
            return;
        }
        const std::lock_guard guard(m_mutex);
        if (!m_bar)
            m_bar.emplace("saving");
        m_bar->show(static_cast<unsigned int>(std::clamp(percent, 0, 100)), 100);
        if (percent >= 100)
            m_bar.reset();
    }

    const std::string_view m_controller;
    const bool m_showsBar;
    std::mutex m_mutex; // guards the two below
    NotificationLines m_lines;
    std::optional<Progress> m_bar;
    std::optional<SdkCalibrationControlWatcher> m_watcher; // last, so that it is detached before the rest goes
};

void watchController(ConsoleSession& console, const Arguments& arguments)
{
    const auto& kind = controllerNamed(arguments.controller);
    const auto handle = console.require(kind);
    const Watch watch(console, arguments);
    std::optional<CsvLog> log;
    if (!arguments.csv.path.empty())
        log.emplace(arguments.csv, NotificationLines::headings);
    const auto requireWritten = [&] {
        if (log)
            log->requireWritten();
    };
    Display display(console, kind.name, log ? &*log : nullptr);
    display.follow(*handle);
    watch.run([&] { console.notify(kind); }, requireWritten);
    requireWritten();
}

} // namespace

void addCalibrationCommand(Command& program)
{
    const auto arguments = std::make_shared<Arguments>();
    Command& watch = program.add("calibration", "Follow the calibration controllers")
                         .add("watch", "Print what happens at a controller until stopped (Ctrl-C)");
    addWatchOptions(watch, *arguments);
    watch
        .optional("--controller", &arguments->controller, "NUMBER", "Which of the two controllers, 1 or 2 (1)",
                  [](const Words& /*before*/) { return Words{"1", "2"}; })
        .runs(watchController, arguments);
}

} // namespace tov::console

#include "console/commands/commands.h"

#include "console/notifications/notificationlines.h"
#include "console/notifications/watching.h"
#include "console/terminal/progress.h"
#include "console/terminal/terminal.h"
#include "service/calibration/sdkcalibrationcontrolwatcher.h"
#include "tools/text/number.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <utility>

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
    Display(ConsoleSession& console, std::string_view controller, std::shared_ptr<CsvLog> log)
        : m_controller(controller)
        , m_showsBar(console.output().isText() && standardOutputIsTerminal() && standardErrorIsTerminal())
        , m_lines(console, std::move(log))
    {
    }

    /// Slots have a share of the display, so that it lives as long as one runs.
    static void follow(const SdkCalibrationControlWatcher& watcher, const std::shared_ptr<Display>& display)
    {
        QObject::connect(&watcher, &SdkCalibrationControlWatcher::unitStatusChanged,
                         [display] { display->showLine("unit-status-changed"); });
        QObject::connect(&watcher, &SdkCalibrationControlWatcher::configurationChanged,
                         [display] { display->showLine("configuration-changed"); });
        QObject::connect(&watcher, &SdkCalibrationControlWatcher::saveProgressChanged,
                         [display](int percent) { display->showProgress(percent); });
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
};

void watchController(ConsoleSession& console, const Arguments& arguments)
{
    const auto& kind = controllerNamed(arguments.controller);
    const auto handle = console.require(kind);
    const Watch watch(console, arguments);
    const auto log = std::make_shared<CsvLog>(arguments.csv, NotificationLines::headings);
    const auto requireWritten = [&] { log->requireWritten(); };
    const SdkCalibrationControlWatcher watcher(*handle);
    Display::follow(watcher, std::make_shared<Display>(console, kind.name, log));
    watch.run([&] { console.notify(kind); }, requireWritten);
    requireWritten();
    requireStillThere(console, kind);
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

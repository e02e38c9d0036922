#include "console/commands/commands.h"

#include "console/notifications/watching.h"
#include "console/terminal/terminal.h"

#include <QJsonDocument>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <iostream>
#include <map>
#include <mutex>

namespace tov::console {

namespace {

using devices::service::SdkTemperatureControl;

std::string degrees(double temperature)
{
    return QString::number(temperature, 'f', 1).toStdString();
}

QJsonObject toJson(const SdkTemperatureControl& control)
{
    QJsonArray modules;
    for (const auto& module : control.modulesTemperature())
        modules.append(QJsonObject{{"module", module.name}, {"temperature", module.temperature}});
    return {{"temperature", control.temperature()}, {"modules", modules}};
}

void show(ConsoleSession& console)
{
    const auto control = console.require(host::controls::temperature);
    Table table({"module", "temperature"});
    for (const auto& module : control->modulesTemperature())
        table.addRow({module.name.toStdString(), degrees(module.temperature)});
    table.addRow({"overall", degrees(control->temperature())});
    console.output().answer(table.toText(), toJson(*control));
}

/// The last readings of each module, drawn as a line of bars.
class History
{
public:
    void add(const std::string& name, double temperature)
    {
        auto& readings = m_readings[name];
        readings.push_back(temperature);
        if (readings.size() > width)
            readings.erase(readings.begin());
    }

    std::string graph(const std::string& name) const
    {
        static constexpr std::array bars = {"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
        const auto& readings = m_readings.at(name);
        const auto [least, most] = std::ranges::minmax(readings);
        const double span = std::max(most - least, 1.0); // below one degree it is noise
        std::string graph;
        for (const double reading : readings)
            graph += bars.at(static_cast<std::size_t>(std::lround((reading - least) / span * (bars.size() - 1.0))));
        return graph;
    }

private:
    static constexpr std::size_t width = 40;

    std::map<std::string, std::vector<double>> m_readings;
};

/// Shows the temperatures whenever they have changed: on a terminal as a table that stays in its place, otherwise as a
/// line for each time. Called in the thread that tells.
class LiveTemperatures
{
public:
    LiveTemperatures(const SdkTemperatureControl& control, bool text)
        : m_control(control)
        , m_text(text)
        , m_redraws(text && standardOutputIsTerminal())
    {
    }

    void update()
    {
        const std::lock_guard guard(m_mutex);
        if (!m_text) {
            std::cout << QJsonDocument(toJson(m_control)).toJson(QJsonDocument::Compact).constData() << "\n"
                      << std::flush;
            return;
        }
        const auto modules = m_control.modulesTemperature();
        if (!m_redraws) {
            std::cout << "overall " << degrees(m_control.temperature());
            for (const auto& module : modules)
                std::cout << ", " << module.name.toStdString() << " " << degrees(module.temperature);
            std::cout << "\n" << std::flush;
            return;
        }
        Table table({"module", "temperature", "history"});
        const auto addRow = [&](const std::string& name, double temperature) {
            m_history.add(name, temperature);
            table.addRow({name, degrees(temperature), m_history.graph(name)});
        };
        for (const auto& module : modules)
            addRow(module.name.toStdString(), module.temperature);
        addRow("overall", m_control.temperature());
        if (m_drawn > 0)
            std::cout << "\x1b[" << m_drawn << "A\x1b[J"; // back to where the table begins
        std::cout << table.toText() << std::flush;
        m_drawn = modules.size() + 2;
    }

private:
    const SdkTemperatureControl& m_control;
    const bool m_text;
    const bool m_redraws;
    std::mutex m_mutex; // guards all below
    History m_history;
    std::size_t m_drawn = 0; // lines
};

void watchTemperatures(ConsoleSession& console, const WatchArguments& arguments)
{
    const auto control = console.require(host::controls::temperature);
    const Watch watch(console, arguments);
    LiveTemperatures live(*control, console.output().isText());
    live.update();
    const QObject here; // the connection ends with it
    QObject::connect(
        control.get(), &SdkTemperatureControl::temperaturesChanged, &here, [&live] { live.update(); },
        Qt::DirectConnection);

    const auto tick = [&] { console.passTime(std::chrono::seconds(1)); };
    // Nobody else lets time pass for an instrument with a clock of its own.
    const bool hasOwnClock = console.can(provider::ITestHooks::Ability::PassTime);
    watch.run(tick, hasOwnClock ? tick : std::function<void()>());
}

} // namespace

void addTemperatureCommand(Command& program)
{
    Command& temperature = program.add("temperature", "Show the temperatures of the instrument and its modules");
    const auto arguments = std::make_shared<WatchArguments>();
    temperature.add("show", "Show the temperatures in °C").runs(show);
    temperature.add("watch", "Follow the temperatures until stopped (Ctrl-C)")
        .optional("--exercise", &arguments->exercise, "COUNT", "Let COUNT seconds pass at once, and end")
        .runs(watchTemperatures, arguments);
}

} // namespace tov::console

#include "console/commands/commands.h"

#include "console/notifications/watching.h"
#include "console/terminal/terminal.h"
#include "tools/files/csvlog.h"
#include "tools/text/display.h"
#include "tools/text/number.h"
#include "tools/text/values.h"

#include <QJsonDocument>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tov::console {

namespace {

using devices::service::SdkTemperatureControl;

struct Arguments : WatchArguments
{
    std::optional<std::string> interval;
    std::optional<std::string> most;
};

std::string degrees(double temperature)
{
    return QString::number(temperature, 'f', 1).toStdString();
}

/// The temperatures of one moment.
struct Reading
{
    double overall;
    std::vector<SdkTemperatureControl::ModuleTemperature> modules;
};

Reading readingOf(const SdkTemperatureControl& control)
{
    Reading reading{asMeasured(control.temperature()), control.modulesTemperature()};
    for (auto& module : reading.modules)
        module.temperature = asMeasured(module.temperature);
    return reading;
}

QJsonObject toJson(const Reading& reading)
{
    QJsonArray modules;
    for (const auto& module : reading.modules)
        modules.append(QJsonObject{{"module", module.name}, {"temperature", module.temperature}});
    return {{"temperature", reading.overall}, {"modules", modules}};
}

void show(ConsoleSession& console)
{
    const Reading reading = readingOf(*console.require(host::controls::temperature));
    Table table({"module", {"temperature (°C)", "temperature"}});
    for (const auto& module : reading.modules)
        table.addRow({module.name, degrees(module.temperature)});
    table.addRow({"overall", degrees(reading.overall)});
    console.output().answer(console.output().shown(table), toJson(reading));
}

/// The last readings of each module, drawn as a line of bars.
class History
{
public:
    void add(const std::string& name, double temperature)
    {
        auto& readings = m_readings[name];
        readings.push_back(temperature);
        if (readings.size() > longest)
            readings.erase(readings.begin());
    }

    // How many columns there are for it on a terminal of `width`, behind these names and temperatures.
    std::size_t room(std::size_t width) const
    {
        std::size_t taken = 0;
        for (const auto& [name, readings] : m_readings)
            taken = std::max(taken, displayWidth(displayed(name)));
        taken += std::string_view("  temperature  ").size();
        return width == 0 ? longest : std::clamp<std::size_t>(width - std::min(width, taken), 1, longest);
    }

    /// The last `columns` of them.
    std::string graph(const std::string& name, std::size_t columns) const
    {
        static constexpr std::array bars = {"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
        const auto& all = m_readings.at(name);
        const std::vector<double> readings(all.end() - std::min(std::ssize(all), static_cast<std::ptrdiff_t>(columns)),
                                           all.end());
        double least = std::numeric_limits<double>::infinity();
        double most = -least;
        for (const double reading : readings) {
            least = std::min(least, reading);
            most = std::max(most, reading);
        }
        const double span = std::max(most - least, 1.0); // below one degree it is noise
        std::string graph;
        for (const double reading : readings)
            graph += bars.at(static_cast<std::size_t>(std::lround((reading - least) / span * (bars.size() - 1.0))));
        return graph;
    }

private:
    static constexpr std::size_t longest = 40;

    std::map<std::string, std::vector<double>> m_readings;
};

/// Shows readings: on a terminal as a table that stays in its place, otherwise as a line for each.
class ReadingLines
{
public:
    explicit ReadingLines(ConsoleSession& console)
        : m_following(console.following())
        , m_text(console.output().isText())
        , m_redraws(m_text && standardOutputIsTerminal())
    {
    }

    void show(const std::string& time, const Reading& reading)
    {
        if (m_redraws)
            redraw(time, reading);
        else
            m_following.print((m_text ? lineOf(time, reading) : jsonLineOf(time, reading)) + "\n");
    }

private:
    static std::string lineOf(const std::string& time, const Reading& reading)
    {
        std::string line = time + " overall " + degrees(reading.overall);
        for (const auto& module : reading.modules)
            line.append(", ").append(module.name.toStdString()).append(" ").append(degrees(module.temperature));
        return line;
    }

    static std::string jsonLineOf(const std::string& time, const Reading& reading)
    {
        QJsonObject line = toJson(reading);
        line.insert("time", QString::fromStdString(time));
        return QJsonDocument(line).toJson(QJsonDocument::Compact).toStdString();
    }

    void redraw(const std::string& time, const Reading& reading)
    {
        std::vector<std::pair<std::string, double>> rows;
        rows.reserve(reading.modules.size() + 1);
        for (const auto& module : reading.modules)
            rows.emplace_back(module.name.toStdString(), module.temperature);
        rows.emplace_back("overall", reading.overall);
        for (const auto& [name, temperature] : rows)
            m_history.add(name, temperature);
        const std::size_t width = terminalWidth();
        Table table({"module", "temperature", "history"});
        for (const auto& [name, temperature] : rows)
            table.addRow({name, degrees(temperature), m_history.graph(name, m_history.room(width))});
        const std::string drawn = time + "\n" + table.toText({.columns = {}, .filter = {}, .width = width});
        std::string back; // to where the table begins
        if (m_drawn > 0)
            back = "\x1b[" + std::to_string(m_drawn) + "A\x1b[J";
        m_following.print(back + drawn);
        m_drawn = std::ranges::count(drawn, '\n');
    }

    Following& m_following;
    const bool m_text;
    const bool m_redraws;
    History m_history;
    std::ptrdiff_t m_drawn = 0; // lines
};

/// Who was warmer than allowed: since when, and how warm at most.
class Excesses
{
public:
    explicit Excesses(std::optional<double> most)
        : m_most(most)
    {
    }

    void look(const std::string& time, const Reading& reading)
    {
        look(time, "overall", reading.overall);
        for (const auto& module : reading.modules)
            look(time, module.name.toStdString(), module.temperature);
    }

    /// Throws `Failure` when there was one.
    void judge() const
    {
        std::string found;
        for (const auto& [name, excess] : m_found)
            found.append(found.empty() ? "" : "; ")
                .append(name + " from " + excess.since + ", at most " + toText(excess.most) + " at " + excess.mostAt);
        if (m_most && !found.empty())
            throw Failure("warmer than " + toText(*m_most) + " °C: " + found);
    }

private:
    struct Excess
    {
        std::string since;
        double most;
        std::string mostAt;
    };

    void look(const std::string& time, const std::string& name, double temperature)
    {
        if (!m_most || temperature <= *m_most)
            return;
        auto& excess = m_found.try_emplace(name, time, temperature, time).first->second;
        if (temperature > excess.most)
            excess = {excess.since, temperature, time};
    }

    const std::optional<double> m_most;
    std::map<std::string, Excess> m_found;
};

/// Takes each reading to where it belongs. Called in the thread that tells.
class Readings
{
public:
    /// The rows of the log have the modules that there are now.
    Readings(ConsoleSession& console, const SdkTemperatureControl& control, std::optional<double> most,
             const LocalTarget& log)
        : m_console(console)
        , m_control(control)
        , m_logged(namesOf(control.modulesTemperature()))
        , m_log(log, headingsOf(m_logged))
        , m_lines(console)
        , m_excesses(most)
    {
    }

    void take()
    {
        const std::lock_guard guard(m_mutex);
        const std::string time = m_console.timestamp();
        const Reading reading = readingOf(m_control);
        m_excesses.look(time, reading);
        m_lines.show(time, reading);
        m_log.add(rowOf(time, reading));
    }

    /// Throws `Failure` when a row could not be written.
    void requireWritten() { m_log.requireWritten(); }

    void judge() const
    {
        const std::lock_guard guard(m_mutex);
        m_excesses.judge();
    }

private:
    static std::vector<QString> namesOf(const auto& modules)
    {
        std::vector<QString> names;
        names.reserve(modules.size());
        for (const auto& module : modules)
            names.push_back(module.name);
        return names;
    }

    static std::vector<std::string> headingsOf(const std::vector<QString>& modules)
    {
        std::vector<std::string> headings{"time", "overall"};
        for (const QString& module : modules)
            headings.push_back(module.toStdString());
        return headings;
    }

    std::vector<std::string> rowOf(const std::string& time, const Reading& reading) const
    {
        std::vector<std::string> row{time, toText(reading.overall)};
        for (const QString& name : m_logged) {
            const auto found =
                std::ranges::find(reading.modules, name, &SdkTemperatureControl::ModuleTemperature::name);
            row.push_back(found == reading.modules.end() ? std::string() : toText(found->temperature));
        }
        return row;
    }

    ConsoleSession& m_console;
    const SdkTemperatureControl& m_control;
    const std::vector<QString> m_logged; // the modules in the columns of the log
    CsvLog m_log;
    mutable std::mutex m_mutex; // guards all below
    ReadingLines m_lines;
    Excesses m_excesses;
};

std::optional<double> mostOf(const Arguments& arguments)
{
    if (!arguments.most)
        return {};
    const auto most = parseReal<double>(*arguments.most);
    if (!most || !std::isfinite(*most))
        throw BadUse("'" + *arguments.most + "' is no value for --max: use a number, in °C");
    return most;
}

void watchTemperatures(ConsoleSession& console, const Arguments& arguments)
{
    using std::chrono::seconds;

    const auto most = mostOf(arguments);
    if (arguments.interval && arguments.exercise > 0)
        throw BadUse("--exercise takes a reading each second: leave --interval out");
    const auto interval = arguments.interval ? requireSeconds("--interval", *arguments.interval) : seconds(1);
    const Watch watch(console, arguments);
    const auto control = console.require(host::controls::temperature);
    const auto readings = std::make_shared<Readings>(console, *control, most, arguments.csv);
    readings->take();
    const QObject here; // the connection ends with it; a slot that still runs then has the readings
    if (!arguments.interval)
        QObject::connect(
            control.get(), &SdkTemperatureControl::temperaturesChanged, &here, [readings] { readings->take(); },
            Qt::DirectConnection);
    const auto everyPeriod = [&] {
        requireStillThere(console, host::controls::temperature);
        if (arguments.interval)
            readings->take();
        readings->requireWritten();
    };
    watch.run([&] { console.passTime(seconds(1)); }, everyPeriod, interval);
    readings->requireWritten();
    requireStillThere(console, host::controls::temperature);
    readings->judge();
}

} // namespace

void addTemperatureCommand(Command& program)
{
    Command& temperature = program.add("temperature", "Show the temperatures of the instrument and its modules");
    const auto arguments = std::make_shared<Arguments>();
    temperature.add("show", "Show the temperatures in °C").runs(show);
    Command& watch = temperature.add("watch", "Follow the temperatures until stopped (Ctrl-C)");
    addWatchOptions(watch, *arguments, "Let COUNT seconds pass at once, and end");
    watch
        .optional("--interval", &arguments->interval, "SECONDS",
                  "Take a reading so often, and not whenever the instrument tells of new ones")
        .optional("--max", &arguments->most, "DEGREES",
                  "End with 1 when a module was warmer, which does not end the run")
        .runs(watchTemperatures, arguments);
}

} // namespace tov::console

#include "workbench/models/temperaturehistory.h"

#include "tools/text/values.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

namespace tov::workbench {

namespace {

constexpr double notRead = std::numeric_limits<double>::quiet_NaN();

std::optional<double> ifRead(double temperature)
{
    return std::isnan(temperature) ? std::nullopt : std::optional(temperature);
}

/// Takes points, of which it keeps the least and the greatest of each so many neighbours, in their order.
class Thinning
{
public:
    explicit Thinning(qsizetype neighbours)
        : m_neighbours(neighbours)
    {
    }

    void take(const QPointF& point)
    {
        if (m_taken == 0)
            m_least = m_greatest = point;
        if (point.y() < m_least.y())
            m_least = point;
        if (point.y() > m_greatest.y())
            m_greatest = point;
        if (++m_taken == m_neighbours)
            keep();
    }

    QList<QPointF> points()
    {
        if (m_taken > 0)
            keep();
        return std::move(m_kept);
    }

private:
    void keep()
    {
        m_kept.append(m_least.x() < m_greatest.x() ? m_least : m_greatest);
        if (m_least != m_greatest)
            m_kept.append(m_least.x() < m_greatest.x() ? m_greatest : m_least);
        m_taken = 0;
    }

    const qsizetype m_neighbours;
    qsizetype m_taken = 0;
    QPointF m_least;
    QPointF m_greatest;
    QList<QPointF> m_kept;
};

} // namespace

void TemperatureHistory::add(const TemperatureReading& reading)
{
    if (m_names.isEmpty()) {
        m_names.append(QCoreApplication::translate("tov::workbench::TemperatureHistory", "overall"));
        m_highest.append(notRead);
    }
    QList<double> temperatures(m_names.size(), notRead);
    temperatures[0] = reading.overall;
    for (const auto& module : reading.modules) {
        auto place = m_names.indexOf(module.name, 1);
        if (place < 0) {
            place = m_names.size();
            m_names.append(module.name);
            m_highest.append(notRead);
            temperatures.append(notRead);
        }
        temperatures[place] = module.temperature;
    }
    for (qsizetype place = 0; place < temperatures.size(); ++place)
        m_highest[place] = std::fmax(m_highest[place], temperatures[place]);
    m_readings.push_back({reading.time.toMSecsSinceEpoch(), std::move(temperatures)});
    if (m_readings.size() > longest)
        m_readings.pop_front();
}

std::optional<double> TemperatureHistory::latest(int place) const
{
    return m_readings.empty() ? std::nullopt : ifRead(temperature(m_readings.back(), place));
}

std::optional<double> TemperatureHistory::highest(int place) const
{
    return ifRead(m_highest.at(place));
}

QDateTime TemperatureHistory::begin() const
{
    return m_readings.empty() ? QDateTime() : QDateTime::fromMSecsSinceEpoch(m_readings.front().time);
}

QDateTime TemperatureHistory::end() const
{
    return m_readings.empty() ? QDateTime() : QDateTime::fromMSecsSinceEpoch(m_readings.back().time);
}

Curve TemperatureHistory::curve(int place, const QDateTime& begin, qsizetype most) const
{
    auto from = std::ranges::lower_bound(m_readings, begin.toMSecsSinceEpoch(), {}, &Reading::time);
    if (from != m_readings.begin())
        --from; // the line comes from there
    const qsizetype count = std::distance(from, m_readings.end());
    Thinning thinning(count > most ? 2 * ((count + most - 1) / most) : 1);
    for (auto reading = from; reading != m_readings.end(); ++reading)
        if (const double read = temperature(*reading, place); !std::isnan(read))
            thinning.take({static_cast<double>(reading->time), read});
    return {m_names.at(place), thinning.points()};
}

std::vector<std::vector<std::string>> TemperatureHistory::lines() const
{
    std::vector<std::vector<std::string>> lines;
    lines.reserve(m_readings.size() + 1);
    auto& headings = lines.emplace_back(std::vector<std::string>{"time"});
    for (const QString& name : m_names)
        headings.push_back(name.toStdString());
    for (const Reading& reading : m_readings) {
        const QDateTime time = QDateTime::fromMSecsSinceEpoch(reading.time, Qt::UTC);
        auto& line = lines.emplace_back(std::vector{time.toString(Qt::ISODateWithMs).toStdString()});
        for (int place = 0; place < m_names.size(); ++place) {
            const double read = temperature(reading, place);
            line.push_back(std::isnan(read) ? std::string() : toText(read));
        }
    }
    return lines;
}

double TemperatureHistory::temperature(const Reading& reading, int place)
{
    return place < reading.temperatures.size() ? reading.temperatures.at(place) : notRead;
}

} // namespace tov::workbench

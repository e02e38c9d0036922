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

// Of each so many neighbours the least and the greatest, in their order.
QList<QPointF> thinned(const QList<QPointF>& points, qsizetype neighbours)
{
    const auto lower = [](const QPointF& a, const QPointF& b) { return a.y() < b.y(); };
    QList<QPointF> kept;
    kept.reserve(2 * (points.size() / neighbours + 1));
    for (auto from = points.begin(); from != points.end();) {
        const auto to = from + std::min<qsizetype>(neighbours, points.end() - from);
        auto [first, second] = std::minmax_element(from, to, lower);
        if (second < first)
            std::swap(first, second);
        kept.append(*first);
        if (second != first)
            kept.append(*second);
        from = to;
    }
    return kept;
}

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
    Curve curve{m_names.at(place), {}};
    curve.points.reserve(std::distance(from, m_readings.end()));
    for (auto reading = from; reading != m_readings.end(); ++reading)
        if (const double read = temperature(*reading, place); !std::isnan(read))
            curve.points.append({static_cast<double>(reading->time), read});
    if (curve.points.size() > most)
        curve.points = thinned(curve.points, 2 * ((curve.points.size() + most - 1) / most));
    return curve;
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

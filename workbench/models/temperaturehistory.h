#pragma once

#include "workbench/instrument/temperaturefeed.h"
#include "workbench/models/curves.h"

#include <QDateTime>
#include <QList>
#include <QStringList>

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace tov::workbench {

/// The readings of the temperatures, the last day of them if they come every second. Has a place for the overall
/// temperature, which is the first, and one for each module that was ever read.
///
/// Thread: *owner's thread*.
class TemperatureHistory
{
public:
    /// How many readings are kept.
    static constexpr std::size_t longest = 86'400;

    /// Takes over a reading, which is later than those before.
    void add(const TemperatureReading& reading);

    /// The places, by name.
    const QStringList& names() const { return m_names; }

    /// The temperature of a place in the last reading; nothing when that has none of it.
    std::optional<double> latest(int place) const;

    /// The highest that was ever read of a place.
    std::optional<double> highest(int place) const;

    /// When the first and the last reading that are kept were taken; invalid without any.
    QDateTime begin() const;
    QDateTime end() const;

    /// The temperatures of a place since `begin`, against the time in ms since 1970. Of more than about `most` points,
    /// the least and the greatest of neighbours stand for these.
    Curve curve(int place, const QDateTime& begin, qsizetype most) const;

    /// All readings as lines of text, the headings first.
    std::vector<std::vector<std::string>> lines() const;

private:
    struct Reading
    {
        qint64 time = 0;            // in ms since 1970
        QList<double> temperatures; // of each place that there was then; NaN when it was not read
    };

    static double temperature(const Reading& reading, int place);

    QStringList m_names;
    QList<double> m_highest; // NaN when it was never read
    std::deque<Reading> m_readings;
};

} // namespace tov::workbench

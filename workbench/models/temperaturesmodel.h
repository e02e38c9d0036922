#pragma once

#include "workbench/models/temperaturehistory.h"

#include <QAbstractTableModel>
#include <QMap>
#include <QSet>
#include <QString>

#include <optional>
#include <vector>

namespace tov::workbench {

/// The temperatures as a table: a row for the overall temperature and one for each module, with a limit that the user
/// may set, and with a box that says whether its curve is shown. A row above its limit says so, in bold letters.
///
/// Thread: *owner's thread*.
class TemperaturesModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Name, Latest, Highest, Limit, State, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    const TemperatureHistory& history() const { return m_history; }

    /// Takes over a reading.
    void add(const TemperatureReading& reading);

    /// Gives every row this limit in °C, also those that come later; nothing takes the limits away.
    void setLimits(std::optional<double> limit);

    /// The limit of a row, if it has one.
    std::optional<double> limit(int row) const;

    /// The limits of the rows that are shown, each once, from the lowest.
    std::vector<double> limits() const;

    bool isAbove(int row) const { return excess(row) > 0.0; }

    /// Whether the curve of a row is to be shown.
    bool isShown(int row) const { return !m_hidden.contains(m_history.names().at(row)); }

    /// The curves that are to be shown, as `TemperatureHistory::curve()` gives them; those of the others are empty.
    std::vector<Curve> curves(const QDateTime& begin, qsizetype most) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /// The user changed a limit or what is shown.
    void choiceChanged();

private:
    double excess(int row) const; // in °C above the limit; not above 0 without one
    QString text(int row, int column) const;
    bool setLimit(int row, const QString& text);

    TemperatureHistory m_history;
    std::optional<double> m_limitOfAll;
    QMap<QString, std::optional<double>> m_limits; // of rows that have one of their own
    QSet<QString> m_hidden;
};

} // namespace tov::workbench

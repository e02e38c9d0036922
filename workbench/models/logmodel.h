#pragma once

#include "workbench/instrument/call.h"

#include <QAbstractTableModel>
#include <QString>

#include <deque>

namespace tov::workbench {

/// Every call and every notification, in the order in which they were asked for and told.
///
/// Thread: *owner's thread*.
class LogModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Time, Thread, Control, What, Duration, Outcome, ColumnCount };

    /// More lines than that are not kept: the oldest go.
    static constexpr int most = 100'000;

    using QAbstractTableModel::QAbstractTableModel;

    /// Adds the call, or shows how far it is now.
    void note(const Call& call);
    void note(const Notification& notification);

    void clear();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// The cells of a row, divided by tabs.
    QString line(int row) const;

    /// The headings, divided by tabs.
    QString headings() const;

private:
    struct Line
    {
        quint64 call = 0; // its number; 0: a notification
        QDateTime time;
        QString thread;
        QString control;
        QString what;
        QString duration;
        QString outcome;
    };

    void add(Line line);
    static Line lineOf(const Call& call);

    std::deque<Line> m_lines;
};

} // namespace tov::workbench

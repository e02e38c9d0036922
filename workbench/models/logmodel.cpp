#include "workbench/models/logmodel.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <array>
#include <utility>

namespace tov::workbench {

namespace {

QString outcomeOf(const Call& call)
{
    switch (call.state) {
    case Call::State::Waiting:
        return LogModel::tr("waiting");
    case Call::State::UnderWay:
        return LogModel::tr("under way");
    case Call::State::Done:
        return LogModel::tr("done");
    case Call::State::Failed:
        return LogModel::tr("failed: %1").arg(call.error);
    case Call::State::TakenBack:
        return LogModel::tr("taken back");
    }
    return {};
}

bool hasEnded(const Call& call)
{
    return call.state == Call::State::Done || call.state == Call::State::Failed;
}

} // namespace

void LogModel::note(const Call& call)
{
    if (call.state == Call::State::Waiting) {
        add(lineOf(call));
        return;
    }
    // The calls that change are among the last.
    const auto line = std::ranges::find(m_lines.rbegin(), m_lines.rend(), call.number, &Line::call);
    if (line == m_lines.rend())
        return;
    *line = lineOf(call);
    const auto row = static_cast<int>(m_lines.rend() - line) - 1;
    Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

void LogModel::note(const Notification& notification)
{
    QString numbers;
    for (const double number : notification.numbers)
        numbers.append(' ').append(QString::number(number, 'g', QLocale::FloatingPointShortest));
    add({.call = 0,
         .time = notification.time,
         .thread = notification.thread,
         .control = notification.control,
         .what = notification.name + numbers,
         .duration = {},
         .outcome = tr("notified")});
}

void LogModel::clear()
{
    beginResetModel();
    m_lines.clear();
    endResetModel();
}

int LogModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

int LogModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant LogModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::TextAlignmentRole && index.column() == Duration)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const Line& line = m_lines.at(static_cast<std::size_t>(index.row()));
    switch (index.column()) {
    case Time:
        return line.time.toString(QStringLiteral("HH:mm:ss.zzz"));
    case Thread:
        return line.thread;
    case Control:
        return line.control;
    case What:
        return line.what;
    case Duration:
        return line.duration;
    default:
        return line.outcome;
    }
}

QVariant LogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const std::array<QString, ColumnCount> headings = {tr("Time"), tr("Thread"),        tr("Control"),
                                                       tr("What"), tr("Duration (ms)"), tr("Outcome")};
    return headings.at(static_cast<std::size_t>(section));
}

QString LogModel::line(int row) const
{
    QStringList cells(m_lines.at(static_cast<std::size_t>(row)).time.toString(Qt::ISODateWithMs));
    for (int column = Thread; column < ColumnCount; ++column)
        cells.append(data(index(row, column), Qt::DisplayRole).toString());
    return cells.join('\t');
}

QString LogModel::headings() const
{
    QStringList cells;
    for (int column = 0; column < ColumnCount; ++column)
        cells.append(headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    return cells.join('\t');
}

void LogModel::add(Line line)
{
    if (m_lines.size() == most) {
        beginRemoveRows({}, 0, 0);
        m_lines.pop_front();
        endRemoveRows();
    }
    const auto row = static_cast<int>(m_lines.size());
    beginInsertRows({}, row, row);
    m_lines.push_back(std::move(line));
    endInsertRows();
}

LogModel::Line LogModel::lineOf(const Call& call)
{
    const auto milliseconds = std::chrono::duration<double, std::milli>(call.duration).count();
    return {.call = call.number,
            .time = call.asked,
            .thread = call.thread,
            .control = call.control,
            .what = call.what,
            .duration = hasEnded(call) ? QString::number(milliseconds, 'f', 3) : QString(),
            .outcome = outcomeOf(call)};
}

} // namespace tov::workbench

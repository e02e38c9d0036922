#include "workbench/models/temperaturesmodel.h"

#include <QFont>
#include <QLocale>

#include <algorithm>
#include <array>
#include <cmath>

namespace tov::workbench {

namespace {

QString degrees(std::optional<double> temperature)
{
    return temperature ? QLocale().toString(*temperature, 'f', 1) : QStringLiteral("–");
}

} // namespace

void TemperaturesModel::add(const TemperatureReading& reading)
{
    const auto before = rowCount();
    m_history.add(reading);
    if (const auto now = static_cast<int>(m_history.names().size()); now > before) {
        beginResetModel(); // rows come once
        endResetModel();
    } else {
        Q_EMIT dataChanged(index(0, 0), index(now - 1, ColumnCount - 1));
    }
}

void TemperaturesModel::setLimits(std::optional<double> limit)
{
    m_limitOfAll = limit;
    m_limits.clear();
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
    Q_EMIT choiceChanged();
}

std::optional<double> TemperaturesModel::limit(int row) const
{
    return m_limits.value(m_history.names().at(row), m_limitOfAll);
}

std::vector<double> TemperaturesModel::limits() const
{
    std::vector<double> limits;
    for (int row = 0; row < rowCount(); ++row)
        if (const auto its = limit(row); its && isShown(row))
            limits.push_back(*its);
    std::ranges::sort(limits);
    const auto [first, last] = std::ranges::unique(limits);
    limits.erase(first, last);
    return limits;
}

double TemperaturesModel::excess(int row) const
{
    const auto allowed = limit(row);
    const auto latest = m_history.latest(row);
    return allowed && latest ? *latest - *allowed : 0.0;
}

std::vector<Curve> TemperaturesModel::curves(const QDateTime& begin, qsizetype most) const
{
    std::vector<Curve> curves;
    for (int row = 0; row < rowCount(); ++row)
        curves.push_back(isShown(row) ? m_history.curve(row, begin, most) : Curve{m_history.names().at(row), {}});
    return curves;
}

int TemperaturesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_history.names().size());
}

int TemperaturesModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant TemperaturesModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const int row = index.row();
    switch (role) {
    case Qt::DisplayRole:
        return text(row, index.column());
    case Qt::EditRole:
        if (index.column() == Limit)
            return limit(row) ? text(row, Limit) : QString();
        return text(row, index.column());
    case Qt::CheckStateRole:
        if (index.column() == Name)
            return static_cast<int>(isShown(row) ? Qt::Checked : Qt::Unchecked);
        return {};
    case Qt::TextAlignmentRole:
        return QVariant::fromValue((index.column() == Name || index.column() == State ? Qt::AlignLeft : Qt::AlignRight)
                                   | Qt::AlignVCenter);
    case Qt::FontRole:
        if (isAbove(row)) {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        return {};
    case Qt::ToolTipRole:
        return index.column() == Limit ? tr("In °C; empty: no limit") : QString();
    default:
        return {};
    }
}

bool TemperaturesModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const int row = index.row();
    if (role == Qt::CheckStateRole && index.column() == Name) {
        const QString& name = m_history.names().at(row);
        if (value.toInt() == Qt::Checked)
            m_hidden.remove(name);
        else
            m_hidden.insert(name);
    } else if (role != Qt::EditRole || index.column() != Limit || !setLimit(row, value.toString().trimmed())) {
        return false;
    }
    Q_EMIT dataChanged(this->index(row, 0), this->index(row, ColumnCount - 1));
    Q_EMIT choiceChanged();
    return true;
}

bool TemperaturesModel::setLimit(int row, const QString& text)
{
    const QString& name = m_history.names().at(row);
    if (text.isEmpty()) {
        m_limits.insert(name, std::nullopt);
        return true;
    }
    bool isNumber = false;
    double limit = QLocale().toDouble(text, &isNumber);
    if (!isNumber)
        limit = QLocale::c().toDouble(text, &isNumber);
    if (!isNumber || !std::isfinite(limit))
        return false;
    m_limits.insert(name, limit);
    return true;
}

Qt::ItemFlags TemperaturesModel::flags(const QModelIndex& index) const
{
    auto flags = QAbstractTableModel::flags(index);
    if (index.column() == Name)
        flags |= Qt::ItemIsUserCheckable;
    if (index.column() == Limit)
        flags |= Qt::ItemIsEditable;
    return flags;
}

QVariant TemperaturesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const std::array<QString, ColumnCount> headings = {tr("Module"), tr("Now (°C)"), tr("Highest"), tr("Limit"),
                                                       tr("State")};
    return headings.at(static_cast<std::size_t>(section));
}

QString TemperaturesModel::text(int row, int column) const
{
    switch (column) {
    case Name:
        return m_history.names().at(row);
    case Latest:
        return degrees(m_history.latest(row));
    case Highest:
        return degrees(m_history.highest(row));
    case Limit:
        return degrees(limit(row));
    default:
        if (isAbove(row))
            return tr("▲ too warm by %1").arg(degrees(excess(row)));
        return limit(row) ? tr("within") : QString();
    }
}

} // namespace tov::workbench

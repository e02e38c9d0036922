#include "workbench/models/potentiometersmodel.h"

#include <array>
#include <utility>

namespace tov::workbench {

void PotentiometersModel::setPotentiometers(std::vector<Potentiometer> potentiometers)
{
    beginResetModel();
    const bool asBefore = potentiometers.size() == m_rows.size();
    m_rows.resize(potentiometers.size());
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        m_rows[i] = {.potentiometer = std::move(potentiometers[i]), .ram = asBefore ? m_rows[i].ram : std::nullopt};
    endResetModel();
}

void PotentiometersModel::setEeprom(int row, std::optional<int> value)
{
    m_rows.at(static_cast<std::size_t>(row)).potentiometer.eeprom = value;
    Q_EMIT dataChanged(index(row, Eeprom), index(row, Eeprom));
}

void PotentiometersModel::setRam(int row, int value)
{
    m_rows.at(static_cast<std::size_t>(row)).ram = value;
    Q_EMIT dataChanged(index(row, Ram), index(row, Ram));
}

void PotentiometersModel::forgetRam()
{
    if (m_rows.empty())
        return;
    for (Row& row : m_rows)
        row.ram.reset();
    Q_EMIT dataChanged(index(0, Ram), index(rowCount() - 1, Ram));
}

int PotentiometersModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int PotentiometersModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PotentiometersModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Row& row = m_rows.at(static_cast<std::size_t>(index.row()));
    switch (role) {
    case Qt::DisplayRole:
        return text(index);
    case Qt::EditRole: // where nothing is known the editor begins with the least
        if (index.column() == Eeprom)
            return row.potentiometer.eeprom.value_or(row.potentiometer.info.word1);
        if (index.column() == Ram)
            return row.ram.value_or(row.potentiometer.eeprom.value_or(row.potentiometer.info.word1));
        return text(index);
    case Qt::TextAlignmentRole:
        return QVariant::fromValue((index.column() == Name ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    case Qt::ToolTipRole:
        return index.column() == Ram ? tr("What was written last; the instrument does not tell") : QString();
    default:
        return {};
    }
}

bool PotentiometersModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    bool isNumber = false;
    const int number = value.toInt(&isNumber);
    if (role != Qt::EditRole || !isNumber)
        return false;
    if (index.column() == Eeprom)
        Q_EMIT eepromEntered(index.row(), number);
    else if (index.column() == Ram)
        Q_EMIT ramEntered(index.row(), number);
    else
        return false;
    return true;
}

Qt::ItemFlags PotentiometersModel::flags(const QModelIndex& index) const
{
    auto flags = QAbstractTableModel::flags(index);
    if (index.column() == Eeprom || index.column() == Ram)
        flags |= Qt::ItemIsEditable;
    return flags;
}

QVariant PotentiometersModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const std::array<QString, ColumnCount> headings = {tr("Index"), tr("Name"),   tr("Least"),
                                                       tr("Most"),  tr("EEPROM"), tr("Written to RAM")};
    return headings.at(static_cast<std::size_t>(section));
}

QString PotentiometersModel::text(const QModelIndex& index) const
{
    const Row& row = m_rows.at(static_cast<std::size_t>(index.row()));
    const auto& [info, eeprom] = row.potentiometer;
    switch (index.column()) {
    case Index:
        return QString::number(index.row());
    case Name:
        return QString::fromStdString(info.name);
    case Least:
        return QString::number(info.word1);
    case Most:
        return QString::number(info.word2);
    case Eeprom:
        return eeprom ? QString::number(*eeprom) : tr("failed");
    default:
        return row.ram ? QString::number(*row.ram) : QStringLiteral("–");
    }
}

} // namespace tov::workbench

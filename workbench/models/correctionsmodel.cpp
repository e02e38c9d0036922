#include "workbench/models/correctionsmodel.h"

#include "tools/text/correctionname.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tov::workbench {

void CorrectionsModel::setCorrections(std::vector<Correction> corrections)
{
    if (corrections.size() != m_corrections.size()) {
        beginResetModel();
        m_corrections = std::move(corrections);
        endResetModel();
        return;
    }
    m_corrections = std::move(corrections); // the row that was chosen stays so
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

void CorrectionsModel::setEnabled(devices::FactoryCorrection correction, bool isEnabled)
{
    const auto found = std::ranges::find(m_corrections, correction, &Correction::correction);
    if (found == m_corrections.end())
        return;
    found->isEnabled = isEnabled;
    const auto row = static_cast<int>(found - m_corrections.begin());
    Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

int CorrectionsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_corrections.size());
}

int CorrectionsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant CorrectionsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Correction& its = at(index);
    if (role == Qt::CheckStateRole && index.column() == Name)
        return static_cast<int>(its.isEnabled ? Qt::Checked : Qt::Unchecked);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    const auto yesNo = [](bool is) { return is ? tr("yes") : tr("no"); };
    switch (index.column()) {
    case Name:
        return QString::fromStdString(nameOf(its.correction));
    case Enabled:
        return its.isEnabled ? tr("on") : tr("off");
    case Valid:
        return yesNo(its.isValid);
    default:
        return yesNo(its.isModifiable);
    }
}

bool CorrectionsModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole || !(flags(index) & Qt::ItemIsUserCheckable))
        return false;
    Q_EMIT switched(at(index).correction, value.toInt() == Qt::Checked);
    return true;
}

Qt::ItemFlags CorrectionsModel::flags(const QModelIndex& index) const
{
    auto flags = QAbstractTableModel::flags(index);
    const Correction& its = at(index);
    if (index.column() == Name && its.isValid && its.isModifiable)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

QVariant CorrectionsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const std::array<QString, ColumnCount> headings = {tr("Correction"), tr("State"), tr("Data valid"),
                                                       tr("May be switched")};
    return headings.at(static_cast<std::size_t>(section));
}

const CorrectionsModel::Correction& CorrectionsModel::at(const QModelIndex& index) const
{
    return m_corrections.at(static_cast<std::size_t>(index.row()));
}

} // namespace tov::workbench

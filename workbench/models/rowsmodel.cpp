#include "workbench/models/rowsmodel.h"

#include "tools/text/values.h"

#include <utility>

namespace tov::workbench {

RowsModel::RowsModel(QStringList headings, QObject* parent)
    : QAbstractTableModel(parent)
    , m_headings(std::move(headings))
{
}

void RowsModel::setRows(Rows rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

void RowsModel::setTable(const QStringList& headings, Rows rows)
{
    beginResetModel();
    m_headings = headings;
    m_rows = std::move(rows);
    endResetModel();
}

int RowsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int RowsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_headings.size());
}

QVariant RowsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const QVariant& value = m_rows.at(static_cast<std::size_t>(index.row())).at(index.column());
    const bool isText = value.typeId() == QMetaType::QString;
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue((isText ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    if (value.typeId() == QMetaType::Double)
        return QString::fromStdString(toText(value.toDouble()));
    return value.toString();
}

QVariant RowsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return m_headings.at(section);
}

} // namespace tov::workbench

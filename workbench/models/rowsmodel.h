#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <QVariant>

#include <vector>

namespace tov::workbench {

/// A table that is only shown: rows of texts and numbers below headings. Numbers stand at the right, and have as few
/// digits as tell them from all others.
///
/// Thread: *owner's thread*.
class RowsModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    using Rows = std::vector<QVariantList>;

    explicit RowsModel(QStringList headings, QObject* parent = nullptr);

    /// Shows these; each has a value for every heading.
    void setRows(Rows rows);

    /// Shows these under other headings.
    void setTable(const QStringList& headings, Rows rows);

    const Rows& rows() const { return m_rows; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QStringList m_headings;
    Rows m_rows;
};

} // namespace tov::workbench

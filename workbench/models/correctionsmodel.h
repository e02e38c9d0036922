#pragma once

#include "devices/factorycorrection.h"

#include <QAbstractTableModel>

#include <vector>

namespace tov::workbench {

/// The factory corrections as a table. A box switches a correction where its data are valid and it may be switched;
/// what it shows is what the instrument told last.
///
/// Thread: *owner's thread*.
class CorrectionsModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Name, Enabled, Valid, Modifiable, ColumnCount };

    /// A correction as it was read.
    struct Correction
    {
        devices::FactoryCorrection correction;
        bool isEnabled;
        bool isValid;
        bool isModifiable;
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows these.
    void setCorrections(std::vector<Correction> corrections);

    /// The instrument told that a correction was switched; one that is not shown changes nothing.
    void setEnabled(devices::FactoryCorrection correction, bool isEnabled);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /// The user switches a correction.
    void switched(tov::devices::FactoryCorrection correction, bool enable);

private:
    const Correction& at(const QModelIndex& index) const;

    std::vector<Correction> m_corrections;
};

} // namespace tov::workbench

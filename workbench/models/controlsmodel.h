#pragma once

#include "host/controls.h"
#include "workbench/instrument/call.h"

#include <QAbstractTableModel>

#include <array>
#include <functional>

namespace tov::workbench {

/// Every kind of control with its name, its state and the last failure of a call to it: a row each, in the order of
/// registration.
///
/// Thread: *owner's thread*.
class ControlsModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Name, State, LastError, ColumnCount };

    /// What was seen of a control.
    enum class Presence {
        Unknown, ///< nobody looked yet
        Absent,
        Present,
        CameBack, ///< present, and was absent before
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Takes over which controls are there now.
    void show(const std::function<bool(const host::ControlName&)>& isPresent);

    /// Notes the failure of a call to a control; other calls change nothing.
    void note(const Call& call);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row
    {
        Presence presence = Presence::Unknown;
        QString lastError;
    };

    std::array<Row, host::controls::all.size()> m_rows;
};

} // namespace tov::workbench

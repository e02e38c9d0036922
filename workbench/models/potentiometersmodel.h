#pragma once

#include "service/memory/ipotentiometerscontrol.h"

#include <QAbstractTableModel>

#include <optional>
#include <vector>

namespace tov::workbench {

/// The potentiometers as a table: what the instrument says of each, its value in EEPROM, and what was written to its
/// RAM, which cannot be read. What the user enters is not shown before the instrument has taken it.
///
/// Thread: *owner's thread*.
class PotentiometersModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Index, Name, Least, Most, Eeprom, Ram, ColumnCount };

    /// A potentiometer as it was read.
    struct Potentiometer
    {
        devices::service::PotentiometerInfo info;
        std::optional<int> eeprom; ///< nothing when it could not be read
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows these. What was written to RAM stays where there are as many as before.
    void setPotentiometers(std::vector<Potentiometer> potentiometers);

    /// Takes over the value that a potentiometer has in EEPROM.
    void setEeprom(int row, std::optional<int> value);

    /// Takes over what was written to RAM.
    void setRam(int row, int value);

    /// Forgets what was written to RAM: the instrument may have other values there.
    void forgetRam();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /// The user entered a value for EEPROM or RAM.
    void eepromEntered(int row, int value);
    void ramEntered(int row, int value);

private:
    struct Row
    {
        Potentiometer potentiometer;
        std::optional<int> ram;
    };

    QString text(const QModelIndex& index) const;

    std::vector<Row> m_rows;
};

} // namespace tov::workbench

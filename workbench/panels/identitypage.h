#pragma once

#include "workbench/models/rowsmodel.h"
#include "workbench/panels/page.h"

#include <array>
#include <vector>

class QLineEdit;
class QSpinBox;
class QTableView;

namespace tov::workbench {

class ValueLabel;

/// The serial number and the USB identifier. The page asks before it writes them, and looks afterwards what the
/// instrument has taken.
class IdentityPage final : public Page
{
    Q_OBJECT

public:
    explicit IdentityPage(Panel& panel);

    void refresh() override;

private:
    using UsbId = devices::service::IUsbIdControl::UsbId;

    void addSerialNumber();
    void addUsbId();
    void show(unsigned int serialNumber);
    void show(const UsbId& id);
    void showOffered(const std::vector<UsbId>& ids);
    UsbId enteredId() const;
    void askToWriteSerialNumber();
    void writeSerialNumber(unsigned int number);
    void writeUsbId(const UsbId& id);

    ValueLabel* m_serialNumber = nullptr;
    QLineEdit* m_newSerialNumber = nullptr;
    ValueLabel* m_usbId = nullptr;
    std::array<QSpinBox*, 3> m_newUsbId{};
    RowsModel m_offered;
    std::vector<UsbId> m_offeredIds; // of the rows
};

} // namespace tov::workbench

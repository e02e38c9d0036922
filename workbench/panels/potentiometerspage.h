#pragma once

#include "workbench/models/potentiometersmodel.h"
#include "workbench/panels/page.h"

namespace tov::workbench {

/// The potentiometers with their values in EEPROM and RAM, which are written when they are entered. After a value in
/// EEPROM was written, the instrument is asked which it has now.
class PotentiometersPage final : public Page
{
    Q_OBJECT

public:
    explicit PotentiometersPage(Panel& panel);

    void refresh() override;

private:
    void writeEeprom(int row, int value);
    void writeRam(int row, int value);

    PotentiometersModel m_model;
};

} // namespace tov::workbench

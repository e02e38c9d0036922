#pragma once

#include "workbench/panels/pagedpanel.h"

namespace tov::workbench {

/// The calibrations with their frequency plans and data, the factory corrections, and the calibration controllers.
class CalibrationPanel final : public PagedPanel
{
    Q_OBJECT

public:
    explicit CalibrationPanel(Instrument& instrument, QWidget* parent = nullptr);
};

} // namespace tov::workbench

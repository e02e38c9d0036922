#pragma once

#include "sdk/service/iyqfactorypowercalibrationcontrol.h"
#include "sdk/service/iyqifswcalibrationcontrol.h"

#include <chrono>
#include <vector>

namespace tov::simulator {

/// The IF-switch calibration as it was saved in the simulated instrument, with the time at which it was.
struct StoredIfswCalibration
{
    std::chrono::sys_seconds time;
    sdk::service::IYqIfswCalibrationControl::CalibrationData data;
};

/// The factory power calibration as it was saved in the simulated instrument, with the time that came with it.
struct StoredFactoryPowerCalibration
{
    std::chrono::sys_seconds time;
    double parameter = 0.0;
    std::vector<sdk::service::IYqFactoryPowerCalibrationControl::PowerCalPoint> points;
};

} // namespace tov::simulator

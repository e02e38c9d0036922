#pragma once

#include "sdk/service/iyqfactorypowercalibrationcontrol.h"
#include "sdk/service/iyqifswcalibrationcontrol.h"

#include <chrono>
#include <vector>

namespace tov::simulator {

/// The IF-switch calibration as it was saved in the simulated instrument, with the time at which it was.
struct StoredIfswCalibration
{
    std::chrono::sys_seconds time;                                 ///< when it was saved, by the computer's clock
    sdk::service::IYqIfswCalibrationControl::CalibrationData data; ///< what was saved
};

/// The factory power calibration as it was saved in the simulated instrument, with the time that came with it.
struct StoredFactoryPowerCalibration
{
    std::chrono::sys_seconds time; ///< the time that came with it
    double parameter = 0.0;        ///< the number that came with it, without meaning to the simulator

    /// The measured points.
    std::vector<sdk::service::IYqFactoryPowerCalibrationControl::PowerCalPoint> points;
};

} // namespace tov::simulator

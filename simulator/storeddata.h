#pragma once

#include "sdk/corrections/errorterms.h"
#include "sdk/service/isystemtermscontrol.h"
#include "sdk/service/iyqfactorypowercalibrationcontrol.h"
#include "sdk/service/iyqifswcalibrationcontrol.h"

#include <chrono>
#include <vector>

namespace tov::simulator {

/// The system error terms as they were written to the simulated instrument.
struct StoredTerms
{
    long long secondsSinceEpoch = 0; ///< the time that came with them
    double parameter = 0.0;          ///< the number that came with them, without meaning to the simulator

    /// The records that came with them; none when they were written without.
    std::vector<sdk::service::ISystemTermsControl::TermsRecord> records;

    sdk::corrections::ErrorTerms terms; ///< the terms themselves
};

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

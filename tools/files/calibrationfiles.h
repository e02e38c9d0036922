#pragma once

#include "service/calibration/sdkyqfactorypowercalibrationcontrol.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"

#include <chrono>
#include <string>
#include <vector>

namespace tov::inline tools {

/// How the data files of the two calibrations are written, for the help.
extern const char* const ifswFileFormat;
extern const char* const powerFileFormat;

/// What a file of factory power calibration data holds.
struct PowerFile
{
    std::chrono::sys_seconds time;
    double parameter = 0.0;
    std::vector<devices::service::SdkYqFactoryPowerCalibrationControl::PowerCalPoint> points;
};

/// Each reads a file of this computer. Throws `Failure`, which says what is wrong with it and where.
devices::service::SdkYqIfswCalibrationControl::IfswCalibrationData readIfswFile(const std::string& path);
PowerFile readPowerFile(const std::string& path);

} // namespace tov::inline tools

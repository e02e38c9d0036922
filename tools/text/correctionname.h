#pragma once

#include "service/calibration/sdkfactorycorrectioncontrol.h"

#include <string>

namespace tov::inline tools {

/// How a factory correction is called.
inline std::string nameOf(devices::FactoryCorrection correction)
{
    return "correction-" + std::to_string(static_cast<int>(correction) + 1);
}

} // namespace tov::inline tools

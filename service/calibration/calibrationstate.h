#pragma once

namespace tov::devices::service {

/// State of a calibration, as the instrument numbers it; what the numbers mean is the SDK's. Any other number is told
/// as `State0`.
enum class CalibrationState : int {
    State0, ///< the SDK's 0
    State1, ///< the SDK's 1
    State2, ///< the SDK's 2
    State3, ///< the SDK's 3
};

} // namespace tov::devices::service

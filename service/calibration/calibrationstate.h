#pragma once

namespace tov::devices::service {

/// State of a calibration, as the instrument numbers it.
enum class CalibrationState : int { State0, State1, State2, State3 };

} // namespace tov::devices::service

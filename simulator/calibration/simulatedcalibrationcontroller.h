#pragma once

#include "sdk/service/calibrations/icalibrationcontroller.h"
#include "simulator/calibrationunit.h"

#include <memory>

namespace tov::simulator {

/// A calibration controller as the simulated instrument offers it.
class SimulatedCalibrationController final : public sdk::service::calibrations::ICalibrationController
{
public:
    explicit SimulatedCalibrationController(const std::shared_ptr<CalibrationUnit>& unit);
    SimulatedCalibrationController(const SimulatedCalibrationController&) = delete;
    SimulatedCalibrationController& operator=(const SimulatedCalibrationController&) = delete;
    ~SimulatedCalibrationController() override;

    void addObserver(Observer* observer) override;
    void removeObserver(Observer* observer) override;

private:
    const std::shared_ptr<ObserverHub<Observer>> m_observers;
};

} // namespace tov::simulator

#pragma once

#include "sdk/service/calibrations/icalibrationcontroller.h"
#include "simulator/calibrationunit.h"
#include "simulator/support/controlstate.h"
#include "simulator/support/observers.h"

#include <memory>
#include <mutex>

namespace tov::simulator {

/// What the instrument remembers of the unit at a calibration controller.
class CalibrationUnitState final : public CalibrationUnit, public ControlState
{
public:
    using Observer = sdk::service::calibrations::ICalibrationController::Observer;

    explicit CalibrationUnitState(const std::shared_ptr<Machine>& machine);

    /// Of every control object of this controller.
    const Observers<Observer> observers;

    Status status() const override;
    void setStatus(Status status) override;
    QString configuration() const override;
    void setConfiguration(const QString& configuration) override;
    void beginSave(std::uint64_t total, std::chrono::microseconds duration) override;
    int saves() const override;

    QCborMap save() const override;
    void restore(const QCborMap& saved) override;

private:
    mutable std::mutex m_mutex; // guards all below
    Status m_status = Status::Ready;
    QString m_configuration;
    int m_saves = 0;
};

/// A calibration controller as the simulated instrument offers it.
class SimulatedCalibrationController final : public ObservedControl<sdk::service::calibrations::ICalibrationController>
{
public:
    SimulatedCalibrationController(Operation observing, const std::shared_ptr<CalibrationUnitState>& unit)
        : ObservedControl(unit->observers, observing)
    {
    }
};

} // namespace tov::simulator

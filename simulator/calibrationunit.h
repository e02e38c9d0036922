#pragma once

#include "sdk/service/calibrations/icalibrationcontroller.h"
#include "simulator/support/audience.h"
#include "simulator/support/controlstate.h"

#include <QString>

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>

namespace tov::simulator {

/// The calibration unit at one of the two controllers of the simulated instrument, as the person at the instrument
/// handles it. Whoever observes the controller is told on the simulator's thread.
///
/// Thread: *any thread*.
class CalibrationUnit final : public ControlState
{
public:
    /// Who is told of the unit.
    using Observer = sdk::service::calibrations::ICalibrationController::Observer;

    /// Status of the unit, by the numbers that a file keeps. Nothing in the simulator depends on it.
    enum class Status : int {
        Disconnected, ///< there is no unit at the controller
        WarmingUp,    ///< the unit is not to be used yet
        Ready,        ///< the unit may be used
    };

    /// A unit that is ready and has no configuration. It notifies on the thread of `machine`, which it keeps alive.
    explicit CalibrationUnit(const std::shared_ptr<Machine>& machine);

    /// What `setStatus()` or a file said last.
    Status status() const;

    /// Tells that the unit's status has changed, if it has.
    void setStatus(Status status);

    /// What the unit is set up for, as a text without meaning to the simulator.
    QString configuration() const;

    /// Tells that the configuration has changed, if it has.
    void setConfiguration(const QString& configuration);

    /// Saves `total` of whatever a save consists of in ten equal parts over `duration`, and tells how far it has come
    /// at the beginning and after each.
    void beginSave(std::uint64_t total, std::chrono::microseconds duration = {});

    /// The saves that were begun, which no file keeps.
    int saves() const;

    /// For a control object of this unit.
    Audience<Observer>& audience() noexcept { return m_audience; }

    QCborMap save() const override;
    void restore(const QCborMap& saved) override;

private:
    Audience<Observer> m_audience;

    mutable std::mutex m_mutex; // guards all below
    Status m_status = Status::Ready;
    QString m_configuration;
    int m_saves = 0;
};

} // namespace tov::simulator

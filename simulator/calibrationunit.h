#pragma once

#include <QString>

#include <chrono>
#include <cstdint>

namespace tov::simulator {

/// The calibration unit at one of the two controllers of the simulated instrument, as the person at the instrument
/// handles it. Whoever observes the controller is told on the simulator's thread.
///
/// Thread: *any thread*.
class CalibrationUnit
{
public:
    /// Status of the unit, by the numbers that a file keeps. Nothing in the simulator depends on it.
    enum class Status : int {
        Disconnected, ///< there is no unit at the controller
        WarmingUp,    ///< the unit is not to be used yet
        Ready,        ///< the unit may be used
    };

    /// What `setStatus()` or a file said last; at first that it is ready.
    virtual Status status() const = 0;

    /// Tells that the unit's status has changed, if it has.
    virtual void setStatus(Status status) = 0;

    /// What the unit is set up for, as a text without meaning to the simulator; at first empty.
    virtual QString configuration() const = 0;

    /// Tells that the configuration has changed, if it has.
    virtual void setConfiguration(const QString& configuration) = 0;

    /// Saves `total` of whatever a save consists of in ten equal parts over `duration`, and tells how far it has come
    /// at the beginning and after each.
    virtual void beginSave(std::uint64_t total, std::chrono::microseconds duration = {}) = 0;

    /// The saves that were begun, which no file keeps.
    virtual int saves() const = 0;

protected:
    ~CalibrationUnit() = default;
};

} // namespace tov::simulator

#pragma once

#include "workbench/instrument/instrument.h"

#include <QDateTime>
#include <QFuture>
#include <QObject>

#include <chrono>
#include <memory>
#include <vector>

namespace tov::workbench {

/// The temperatures of one moment, in °C.
struct TemperatureReading
{
    QDateTime time; ///< where time was let pass, it is ahead of the clock on the wall
    double overall = 0.0;
    std::vector<devices::service::SdkTemperatureControl::ModuleTemperature> modules;
};

/// Takes a reading of the temperatures whenever the instrument tells of new ones, from the first `read()` on.
///
/// Thread: *owner's thread*, but for the signal.
class TemperatureFeed final : public QObject
{
    Q_OBJECT

public:
    /// `instrument` must outlive it.
    explicit TemperatureFeed(Instrument& instrument, QObject* parent = nullptr);
    TemperatureFeed(const TemperatureFeed&) = delete;
    TemperatureFeed& operator=(const TemperatureFeed&) = delete;
    ~TemperatureFeed() override;

    /// Takes a reading now. The future throws `host::ControlAbsent` when there is no such control.
    QFuture<TemperatureReading> read();

    /// Lets so much time pass at once, second by second; for an instrument whose test hooks can pass time.
    QFuture<provider::Result<void>> passTime(std::chrono::seconds time);

    /// Lets the time that has really passed pass for such an instrument.
    QFuture<provider::Result<void>> keepUp(std::chrono::milliseconds time);

Q_SIGNALS:
    /// The instrument told of new temperatures, which are these. Emitted on the *SDK's notification thread*: connect it
    /// with a context object of the thread that is to know.
    void told(const tov::workbench::TemperatureReading& reading);

private:
    class Relay;

    Instrument& m_instrument;
    const std::shared_ptr<Relay> m_relay; // slots that still run at the end have a share of it
};

} // namespace tov::workbench

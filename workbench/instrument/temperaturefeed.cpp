#include "workbench/instrument/temperaturefeed.h"

#include "tools/text/values.h"

#include <algorithm>
#include <atomic>
#include <mutex>

namespace tov::workbench {

using devices::service::SdkTemperatureControl;
using provider::ITestHooks;
using std::chrono::milliseconds;

/// Stands between the threads that tell and the feed, which may go at any time.
class TemperatureFeed::Relay
{
public:
    explicit Relay(TemperatureFeed& feed)
        : m_feed(&feed)
    {
    }

    void passFeedAway()
    {
        const std::lock_guard guard(m_mutex);
        m_feed = nullptr;
    }

    // Reads in the thread that tells: later the temperatures may be others.
    static void follow(const std::shared_ptr<Relay>& relay, const SdkTemperatureControl& control)
    {
        const std::lock_guard guard(relay->m_mutex);
        if (relay->m_feed == nullptr || relay->m_follows)
            return;
        relay->m_follows = true;
        connect(
            &control, &SdkTemperatureControl::temperaturesChanged, relay->m_feed,
            [relay, &control] { relay->tell(relay->readingOf(control)); }, Qt::DirectConnection);
    }

    TemperatureReading readingOf(const SdkTemperatureControl& control) const
    {
        TemperatureReading reading{.time = QDateTime::currentDateTime().addMSecs(m_ahead.load().count()),
                                   .overall = asMeasured(control.temperature()),
                                   .modules = control.modulesTemperature()};
        for (auto& module : reading.modules)
            module.temperature = asMeasured(module.temperature);
        return reading;
    }

    void goAhead(milliseconds time) { m_ahead = m_ahead.load() + time; }

private:
    void tell(const TemperatureReading& reading)
    {
        const std::lock_guard guard(m_mutex);
        if (m_feed != nullptr)
            Q_EMIT m_feed->told(reading);
    }

    std::atomic<milliseconds> m_ahead = milliseconds(0); // how far the instrument's clock is, of that on the wall
    std::mutex m_mutex;                                  // guards all below
    TemperatureFeed* m_feed;
    bool m_follows = false;
};

TemperatureFeed::TemperatureFeed(Instrument& instrument, QObject* parent)
    : QObject(parent)
    , m_instrument(instrument)
    , m_relay(std::make_shared<Relay>(*this))
{
}

TemperatureFeed::~TemperatureFeed()
{
    m_relay->passFeedAway();
}

QFuture<TemperatureReading> TemperatureFeed::read()
{
    // Not behind the calls that wait for the instrument, which this does not.
    constexpr auto& kind = host::controls::temperature;
    return m_instrument.callSession(QString::fromUtf8(kind.name), tr("read the temperatures"),
                                    [relay = m_relay](host::InstrumentSession& session) {
                                        const auto control = session.control(kind);
                                        if (!control)
                                            throw host::ControlAbsent(kind);
                                        Relay::follow(relay, *control);
                                        return relay->readingOf(*control);
                                    });
}

QFuture<provider::Result<void>> TemperatureFeed::passTime(std::chrono::seconds time)
{
    const auto& abilities = m_instrument.abilities();
    const bool canWait = std::ranges::find(abilities, ITestHooks::Ability::WaitUntilQuiet) != abilities.end();
    return m_instrument.callTestHooks(tr("let %1 s pass").arg(time.count()),
                                      [relay = m_relay, time, canWait](ITestHooks& hooks) -> provider::Result<void> {
                                          constexpr auto step = std::chrono::seconds(1);
                                          provider::Result<void> done;
                                          for (auto passed = std::chrono::seconds(0); done && passed < time;
                                               passed += step) {
                                              relay->goAhead(step); // before anything is told of it
                                              done = hooks.passTime(step);
                                              if (done && canWait)
                                                  done = hooks.waitUntilQuiet();
                                          }
                                          return done;
                                      });
}

QFuture<provider::Result<void>> TemperatureFeed::keepUp(milliseconds time)
{
    return m_instrument.callTestHooks(tr("keep up with the clock"),
                                      [time](ITestHooks& hooks) { return hooks.passTime(time); });
}

} // namespace tov::workbench

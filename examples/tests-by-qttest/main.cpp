// Tests of an application's own objects, which are told by signals and futures.

#include "host/controls.h"
#include "host/instrumentsession.h"
#include "simulator/simulatedinstrument.h"

#include <QSignalSpy>
#include <QTest>

#include <chrono>
#include <memory>

namespace controls = tov::host::controls;
using tov::devices::service::SdkTemperatureControl;
using tov::simulator::Configuration;
using tov::simulator::Operation;
using tov::simulator::SimulatedInstrument;
using tov::simulator::Timing;

using namespace std::chrono_literals;

// What is tested: an alarm for an instrument that becomes too warm.
class Alarm final : public QObject
{
    Q_OBJECT

public:
    Alarm(std::shared_ptr<SdkTemperatureControl> temperature, double limit)
        : m_temperature(std::move(temperature))
    {
        connect(m_temperature.get(), &SdkTemperatureControl::temperaturesChanged, this, [this, limit] {
            if (m_temperature->temperature() > limit)
                emit raised(m_temperature->temperature());
        });
    }

signals:
    void raised(double temperature);

private:
    const std::shared_ptr<SdkTemperatureControl> m_temperature;
};

class AlarmTest final : public QObject
{
    Q_OBJECT

private slots:
    // Time stands still unless the test lets it pass, and what is read depends on the seed alone.
    void isRaisedWhenTheInstrumentIsTooWarm()
    {
        const auto instrument = std::make_shared<SimulatedInstrument>(Configuration{.timing = {.seed = 42}});
        tov::host::InstrumentSession session(instrument);
        Alarm alarm(session.control(controls::temperature), 30.0);
        const QSignalSpy raised(&alarm, &Alarm::raised);

        instrument->passTime(10s);
        instrument->waitUntilQuiet();
        QCoreApplication::processEvents();
        QCOMPARE(raised.count(), 0);

        instrument->passTime(10min);
        QTRY_COMPARE(raised.count(), 1); // the signal comes by the event loop
        QVERIFY(raised.front().front().toDouble() > 30.0);
    }

    // An instrument that answers late, asked on a thread that may wait.
    void leavesTheWindowFreeWhileTheInstrumentIsSlow()
    {
        Configuration slow;
        slow.timing.answers = Timing::Answers::Later;
        slow.timing.delay = 50ms;
        const auto instrument = std::make_shared<SimulatedInstrument>(slow);
        tov::host::InstrumentSession session(instrument);

        auto number = session.run(controls::serialNumber, [](auto& control) { return control.serialNumber(); });
        QTRY_VERIFY(number.isFinished()); // the event loop goes on meanwhile
        QCOMPARE(number.result().value(), 100001U);
    }

    // What an instrument throws comes out of the future.
    void tellsWhatAnInstrumentThrows()
    {
        const auto instrument = std::make_shared<SimulatedInstrument>();
        tov::host::InstrumentSession session(instrument);
        instrument->faults().throwFrom(Operation::LoLeakageChange);
        auto change = session.run(controls::loLeakage, [](auto& control) { control.setEnabled(true); });
        QVERIFY_EXCEPTION_THROWN(change.waitForFinished(), std::runtime_error);
    }
};

QTEST_GUILESS_MAIN(AlarmTest)

#include "main.moc"

// The simulated tuning and temperature controls, used through the library's adapters as an application does.

#include "host/instrumentsession.h"
#include "simulator/simulatedinstrument.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace tov::testing {

namespace {

namespace controls = devices::controls;
using namespace devices::service;

using simulator::Operation;
using ::testing::ElementsAre;
using ::testing::SizeIs;

using namespace std::chrono_literals;

class SimulatedModules : public ::testing::Test
{
protected:
    std::shared_ptr<simulator::SimulatedInstrument> instrument = std::make_shared<simulator::SimulatedInstrument>();
    host::InstrumentSession session{instrument};
};

class NotificationCounter final : public sdk::ITemperatureControl::Observer
{
public:
    void onTemperatureChanged() override { ++count; }

    std::atomic<int> count = 0;
};

std::shared_ptr<sdk::ITemperatureControl> temperatureOf(simulator::SimulatedInstrument& instrument)
{
    return std::static_pointer_cast<sdk::ITemperatureControl>(instrument.findControl(controls::temperature.keys.sdk));
}

} // namespace

TEST_F(SimulatedModules, ThrowWhenTheirSettingsAreToldTo)
{
    const auto throwsAsTold = [this](Operation reading, Operation changing, const auto& read, const auto& change) {
        simulator::Faults& faults = instrument->faults();
        faults.throwFrom(reading);
        EXPECT_THROW(read(), std::runtime_error);
        EXPECT_NO_THROW(change());
        faults.throwFrom(changing);
        EXPECT_THROW(change(), std::runtime_error);
        faults.heal(reading);
        EXPECT_NO_THROW(read());
        faults.spare(changing, 1);
        EXPECT_NO_THROW(change());
        EXPECT_THROW(change(), std::runtime_error);
        faults.heal(changing);
        EXPECT_NO_THROW(change());
    };

    const auto ulkSynthesis = session.control(controls::ulkSynthesis);
    throwsAsTold(
        Operation::UlkSynthesisRead, Operation::UlkSynthesisChange, [&] { return ulkSynthesis->filter1Frequency(); },
        [&] { ulkSynthesis->reset(); });
    const auto ulkPower = session.control(controls::ulkPower);
    throwsAsTold(
        Operation::UlkPowerRead, Operation::UlkPowerChange, [&] { return ulkPower->loPower(); },
        [&] { ulkPower->setLoPowerCodes({1, 2}); });
    const auto wn0807Synthesis = session.control(controls::wn0807Synthesis);
    throwsAsTold(
        Operation::Wn0807SynthesisRead, Operation::Wn0807SynthesisChange,
        [&] { return wn0807Synthesis->rfPowerRangeTable(); },
        [&] { wn0807Synthesis->setCapacitanceRange(SdkWn0807SynthesisControl::Capacitor{}, {1.0, 2.0}); });
    const auto wn0807Power = session.control(controls::wn0807Power);
    throwsAsTold(
        Operation::Wn0807PowerRead, Operation::Wn0807PowerChange, [&] { return wn0807Power->attenuationDb(); },
        [&] { wn0807Power->setAttenuationDb(5.0); });
    const auto loLeakage = session.control(controls::loLeakage);
    throwsAsTold(
        Operation::LoLeakageRead, Operation::LoLeakageChange, [&] { return loLeakage->isEnabled(); },
        [&] { loLeakage->setEnabled(true); });
    const auto kz515Power = session.control(controls::kz515Power);
    throwsAsTold(
        Operation::Kz515PowerRead, Operation::Kz515PowerChange, [&] { return kz515Power->dacA(); },
        [&] { kz515Power->setDacA(1); });
    const auto kz515Synthesis = session.control(controls::kz515Synthesis);
    throwsAsTold(
        Operation::Kz515SynthesisRead, Operation::Kz515SynthesisChange,
        [&] { return kz515Synthesis->currentReferenceFrequency(); },
        [&] { kz515Synthesis->setReferenceFrequency(5e6); });
    const auto yqSynthesis = session.control(controls::yqSynthesis);
    throwsAsTold(
        Operation::YqSynthesisRead, Operation::YqSynthesisChange, [&] { return yqSynthesis->selectedIf(); },
        [&] { yqSynthesis->setSelectedIf(1); });
}

TEST_F(SimulatedModules, ThrowFromTheTemperaturesWhenTheyAreToldTo)
{
    const auto temperature = temperatureOf(*instrument);
    NotificationCounter counter;
    simulator::Faults& faults = instrument->faults();
    for (const Operation operation :
         {Operation::TemperatureRead, Operation::TemperatureReadModules, Operation::TemperatureObserve})
        faults.throwFrom(operation);
    EXPECT_THROW(temperature->temperature(), std::runtime_error);
    EXPECT_THROW(temperature->modulesTemperature(), std::runtime_error);
    EXPECT_THROW(temperature->addObserver(&counter), std::runtime_error);

    faults.heal(Operation::TemperatureReadModules);
    EXPECT_THAT(temperature->modulesTemperature(), SizeIs(9));
    instrument->passTime(1min);
    instrument->waitUntilQuiet();
    EXPECT_EQ(counter.count, 0) << "it was not registered";
    faults.heal(Operation::TemperatureObserve);
    temperature->addObserver(&counter);
    instrument->passTime(1min);
    instrument->waitUntilQuiet();
    EXPECT_EQ(counter.count, 1);
    temperature->removeObserver(&counter);
}

TEST_F(SimulatedModules, KeepTheUlkSynthesisAndRefuseIndicesTheyDoNotHave)
{
    const auto ulk = session.control(controls::ulkSynthesis);
    ulk->setLoLeakageMode(true);
    ulk->enableManualIf(true);
    ulk->setSelectedIf(2);
    ulk->enableManualRef(true);
    ulk->setSelectedRef(1);
    for (const int index : {-1, 99}) {
        ulk->setSelectedIf(index);
        ulk->setSelectedRef(index);
    }
    ulk->setFilter1Frequency(1.0);
    EXPECT_TRUE(ulk->loLeakageMode());
    EXPECT_TRUE(ulk->manualIfEnabled());
    EXPECT_TRUE(ulk->manualRefEnabled());
    EXPECT_EQ(ulk->selectedIf(), 2);
    EXPECT_EQ(ulk->selectedRef(), 1);
    EXPECT_EQ(ulk->filter1Frequency(), 10e6) << "the nearest that it can";
    ulk->setFilter1Frequency(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(ulk->filter1Frequency(), 10e6);
    EXPECT_EQ(ulk->supportedRefs().size(), 3U);

    ulk->reset();
    EXPECT_FALSE(ulk->loLeakageMode());
    EXPECT_EQ(ulk->selectedIf(), 0);
    EXPECT_EQ(ulk->filter1Frequency(), 1e9);
}

TEST_F(SimulatedModules, KeepTheUlkPowerWithinItsCodes)
{
    const auto ulk = session.control(controls::ulkPower);
    ulk->setLoPower(200);
    ulk->setRfPower(7);
    EXPECT_EQ(ulk->loPower(), ulk->maxPowerCode());
    EXPECT_EQ(ulk->rfPower(), 7);
    ulk->setAttenuationStep(-5);
    EXPECT_EQ(ulk->attenuationStep(), 0);
    ulk->setCommonAttenuationStep(99);
    EXPECT_EQ(ulk->commonAttenuationStep(), 31);
    ulk->setStepAttenuatorMode(SdkUlkPowerControl::StepAttenuatorMode::Mode3);
    EXPECT_EQ(ulk->stepAttenuatorMode(), SdkUlkPowerControl::StepAttenuatorMode::Mode3);
    ulk->setAmpRPort1(SdkUlkPowerControl::AmpGain::Gain1);
    EXPECT_EQ(ulk->ampRPort1(), SdkUlkPowerControl::AmpGain::Gain1);
    EXPECT_EQ(ulk->ampTPort1(), SdkUlkPowerControl::AmpGain::Gain0);
    ulk->reset();
    EXPECT_EQ(ulk->attenuationStep(), ulk->defaultAttenuationStep());
    EXPECT_EQ(ulk->ampRPort1(), SdkUlkPowerControl::AmpGain::Gain0);
}

TEST_F(SimulatedModules, TieTheDacsOfTheKz515ToTheirUnion)
{
    const auto power = session.control(controls::kz515Power);
    power->setDacA(1);
    power->setDacB(60000);
    EXPECT_EQ(power->dacA(), 1);
    EXPECT_EQ(power->dacB(), power->maxDacValue());
    power->setDacModeUnion(true);
    power->setUnionDac(77);
    EXPECT_TRUE(power->isDacModeUnion());
    EXPECT_EQ(power->unionDac(), 77);
    EXPECT_EQ(power->dacA(), 77);
    EXPECT_EQ(power->dacB(), 77);
    power->setReferenceGain(12);
    power->setReferenceGain(13);
    EXPECT_EQ(power->referenceGain(), 12) << "no other gains than the available ones";
    EXPECT_THAT(power->availableGains(), ElementsAre(0, 6, 12, 18));
    power->setLoPower(101);
    EXPECT_EQ(power->loPower(), power->maxPowerValue());

    const auto synthesis = session.control(controls::kz515Synthesis);
    synthesis->setReferenceFrequency(100e6);
    synthesis->setReferenceFrequency(7e6);
    EXPECT_EQ(synthesis->currentReferenceFrequency(), 100e6);
}

TEST_F(SimulatedModules, AttenuateInDbAndInSteps)
{
    const auto power = session.control(controls::wn0807Power);
    power->setAttenuationDb(10.3);
    EXPECT_EQ(power->attenuationDb(), 10.25);
    EXPECT_EQ(power->attenuationStep(), 41);
    power->setAttenuationStep(1000);
    EXPECT_EQ(power->attenuationDb(), 60.0);
    using Mode = SdkWn0807PowerControl::StepAttenuatorMode;
    for (const Mode mode : {Mode::Mode0, Mode::Mode3, Mode::Mode4}) {
        power->setStepAttenuatorMode(mode);
        EXPECT_EQ(power->stepAttenuatorMode(), mode);
    }
    power->assignPowerCalibrationTable({1, 2, 3});
}

TEST_F(SimulatedModules, KeepTheRangeTableFiltersAndCapacitorsOfTheWn0807)
{
    const auto synthesis = session.control(controls::wn0807Synthesis);
    const auto factory = synthesis->rfPowerDefaultRangeTable();
    ASSERT_THAT(factory, SizeIs(5));
    synthesis->setRfPowerRangeFrequency(1, 2e9);
    synthesis->setRfPowerRangePower(1, 33);
    synthesis->setRfPowerRangePower(99, 33);
    const auto table = synthesis->rfPowerRangeTable();
    ASSERT_THAT(table, SizeIs(5));
    EXPECT_EQ(table[0].frequency, factory[0].frequency);
    EXPECT_EQ(table[1].frequency, 2e9);
    EXPECT_EQ(table[1].power, 33);
    EXPECT_EQ(synthesis->rfPowerDefaultRangeTable()[1].frequency, 1e9);

    using Capacitor = SdkWn0807SynthesisControl::Capacitor;
    EXPECT_TRUE(synthesis->capacitanceRange(Capacitor::Capacitor1));
    EXPECT_FALSE(synthesis->capacitanceRange(Capacitor::Capacitor2));
    synthesis->setCapacitanceRange(Capacitor::Capacitor2, {3.0, 2.0});
    ASSERT_TRUE(synthesis->capacitanceRange(Capacitor::Capacitor2));
    EXPECT_EQ(synthesis->capacitanceRange(Capacitor::Capacitor2)->first, 3.0);
    synthesis->setCapacitanceMode(Capacitor::Capacitor2, SdkWn0807SynthesisControl::CapacitorMode::Mode2);
    EXPECT_EQ(synthesis->capacitanceMode(Capacitor::Capacitor1), SdkWn0807SynthesisControl::CapacitorMode::Mode0);

    using RfFilter = SdkWn0807SynthesisControl::RfFilter;
    EXPECT_FALSE(synthesis->selectedRfFilter());
    synthesis->setSelectedRfFilter(RfFilter::Filter3);
    EXPECT_EQ(synthesis->selectedRfFilter(), RfFilter::Filter3);
    EXPECT_FALSE(synthesis->rfFilterFrom(RfFilter::Filter4));
    synthesis->setRfFilterFrom(RfFilter::Filter4, 9e9);
    EXPECT_EQ(synthesis->rfFilterFrom(RfFilter::Filter4), 9e9);
    synthesis->setMeasureDelay(0.5);
    EXPECT_EQ(synthesis->measureDelay(), 0.5);
}

TEST_F(SimulatedModules, WarmUpExponentially)
{
    const auto control = temperatureOf(*instrument);
    const auto before = control->modulesTemperature();
    ASSERT_GE(before.size(), 8U);
    for (const auto& [name, temperature] : before)
        EXPECT_EQ(temperature, 23.0F) << name;

    for (int i = 0; i < 60; ++i)
        instrument->passTime(1s);
    // The reference has a time constant of 60 s and ends 37 degrees above.
    EXPECT_NEAR(control->modulesTemperature().at("Reference"), 23.0 + 37.0 * (1.0 - std::exp(-1.0)), 0.5);
    instrument->passTime(1h);
    EXPECT_NEAR(control->modulesTemperature().at("Reference"), 60.0, 0.5);
    EXPECT_NEAR(control->modulesTemperature().at("Power supply"), 55.0, 0.5);
    double sum = 0.0;
    for (const auto& [name, temperature] : control->modulesTemperature())
        sum += static_cast<double>(temperature);
    EXPECT_NEAR(control->temperature(), sum / static_cast<double>(before.size()), 0.06);
}

TEST_F(SimulatedModules, WarmUpAlikeWithTheSameSeed)
{
    const auto readings = [](std::uint32_t seed) {
        simulator::Configuration configuration;
        configuration.timing.seed = seed;
        simulator::SimulatedInstrument other(configuration);
        for (int i = 0; i < 10; ++i)
            other.passTime(10s);
        return temperatureOf(other)->modulesTemperature();
    };
    EXPECT_EQ(readings(7), readings(7));
    EXPECT_NE(readings(7), readings(8));
}

TEST_F(SimulatedModules, TellWhenAReadingHasMoved)
{
    NotificationCounter counter;
    const auto control = temperatureOf(*instrument);
    control->addObserver(&counter);
    instrument->passTime(10s);
    instrument->waitUntilQuiet();
    EXPECT_EQ(counter.count, 1);
    EXPECT_GT(session.control(controls::temperature)->temperature(), 23.0);
    control->removeObserver(&counter);
}

TEST_F(SimulatedModules, AreKeptInAFile)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("state");
    session.control(controls::ulkPower)->setRfPower(9);
    session.control(controls::ulkPower)->setRfPowerCodes({5, 6});
    session.control(controls::wn0807Synthesis)->setSelectedRfFilter(SdkWn0807SynthesisControl::RfFilter::Filter2);
    session.control(controls::wn0807Synthesis)->setRfPowerRangeFrequency(0, 12e6);
    instrument->passTime(1h);
    instrument->save(file);

    const auto other = std::make_shared<simulator::SimulatedInstrument>();
    other->load(file);
    host::InstrumentSession otherSession(other);
    EXPECT_EQ(otherSession.control(controls::ulkPower)->rfPower(), 9);
    EXPECT_EQ(otherSession.control(controls::wn0807Synthesis)->selectedRfFilter(),
              SdkWn0807SynthesisControl::RfFilter::Filter2);
    EXPECT_EQ(otherSession.control(controls::wn0807Synthesis)->rfPowerRangeTable().front().frequency, 12e6);
    EXPECT_NEAR(otherSession.control(controls::temperature)->temperature(), 50.2, 1.0);

    const QString again = folder.filePath("again");
    other->save(again);
    QFile first(file);
    QFile second(again);
    ASSERT_TRUE(first.open(QIODevice::ReadOnly));
    ASSERT_TRUE(second.open(QIODevice::ReadOnly));
    EXPECT_EQ(first.readAll(), second.readAll()) << "the tables too";
}

} // namespace tov::testing

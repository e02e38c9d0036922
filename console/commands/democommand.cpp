#include "console/commands/commands.h"

#include "console/observing.h"
#include "console/workbench.h"
#include "host/loadedlibrary.h"
#include "service/calibration/sdkcalibrationcontrolwatcher.h"

#include <CLI/CLI.hpp>

#include <QDateTime>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <ranges>
#include <string_view>

namespace tov::console {

namespace {

namespace controls = host::controls;
using namespace devices::service;
using devices::FactoryCorrection;

/// Prints what is tried as it happens and remembers, control by control, what did not behave.
class Tour
{
public:
    explicit Tour(Output& output)
        : m_output(output)
    {
    }

    void chapter(const std::string& title)
    {
        m_chapter = title;
        m_output.remark(title);
    }

    void check(const host::ControlName& control, const std::string& what, bool behaved)
    {
        m_output.remark((behaved ? "  ok      " : "  FAILED  ") + std::string(control.name) + ": " + what);
        m_steps.append(QJsonObject{{"chapter", QString::fromStdString(m_chapter)},
                                   {"control", QString::fromUtf8(control.name)},
                                   {"step", QString::fromStdString(what)},
                                   {"ok", behaved}});
        ++m_results[control.name].steps;
        m_results[control.name].failures += behaved ? 0 : 1;
    }

    /// Sums up for every control; one that was never tried did not behave.
    ExitStatus finish()
    {
        Table table({"control", "steps", "result"});
        QJsonArray summary;
        int failed = 0;
        for (const host::ControlName& control : host::controls::all) {
            const Result& result = m_results[control.name];
            const bool behaved = result.steps > 0 && result.failures == 0;
            failed += behaved ? 0 : 1;
            table.addRow({std::string(control.name), std::to_string(result.steps), behaved ? "ok" : "FAILED"});
            summary.append(
                QJsonObject{{"control", QString::fromUtf8(control.name)}, {"steps", result.steps}, {"ok", behaved}});
        }
        const auto count = std::to_string(host::controls::all.size());
        m_output.answer(table.toText()
                            + (failed == 0 ? "All " + count + " controls behaved.\n"
                                           : std::to_string(failed) + " of " + count + " controls failed.\n"),
                        {{"steps", m_steps}, {"controls", summary}, {"failures", failed}});
        return failed == 0 ? ExitStatus::Success : ExitStatus::Failure;
    }

private:
    struct Result
    {
        int steps = 0;
        int failures = 0;
    };

    Output& m_output;
    std::string m_chapter;
    QJsonArray m_steps;
    std::map<std::string_view, Result> m_results;
};

class SerialNumberCounter final : public devices::service::ISerialNumberControl::Observer
{
public:
    void onSerialNumberEvent(const devices::service::SerialNumberEvent& /*event*/) override { ++count; }

    std::atomic<int> count = 0;
};

class CorrectionCounter final : public devices::service::SdkFactoryCorrectionControl::Observer
{
public:
    void onCorrectionsChanged() override { ++announced; }
    void onCorrectionStatesChanged() override {}
    void onEnabledChanged(devices::FactoryCorrection /*correction*/, bool /*enabled*/) override { ++switched; }

    std::atomic<int> announced = 0;
    std::atomic<int> switched = 0;
};

/// Counts what the watcher of a calibration controller emits.
class SignalCounter
{
public:
    explicit SignalCounter(devices::service::SdkCalibrationControlHandle& handle)
        : m_watcher(handle)
    {
        using Watcher = devices::service::SdkCalibrationControlWatcher;
        QObject::connect(&m_watcher, &Watcher::unitStatusChanged, [this] { ++units; });
        QObject::connect(&m_watcher, &Watcher::saveProgressChanged, [this](int newPercent) { percent = newPercent; });
        QObject::connect(&m_watcher, &Watcher::configurationChanged, [this] { ++configurations; });
    }

    std::atomic<int> units = 0;
    std::atomic<int> percent = 0;
    std::atomic<int> configurations = 0;

private:
    devices::service::SdkCalibrationControlWatcher m_watcher;
};

template <typename Observer>
class StateCounter final : public Observer
{
public:
    void onFirstEvent() override {}
    void onSecondEvent() override {}
    void onThirdEvent() override {}
    void onStateChanged(devices::service::CalibrationState /*state*/) override { ++count; }

    std::atomic<int> count = 0;
};

/// The tour with everything that it needs.
class Demo
{
public:
    explicit Demo(Workbench& workbench)
        : m_workbench(workbench)
    {
        QObject::connect(
            m_ulkPower.get(), &SdkUlkPowerControl::rfPowerChanged, &m_here, [this] { ++m_powerChanges; },
            Qt::DirectConnection);
        QObject::connect(
            m_temperature.get(), &SdkTemperatureControl::temperaturesChanged, &m_here,
            [this] { ++m_temperatureChanges; }, Qt::DirectConnection);
    }

    ExitStatus run()
    {
        useControls();
        takeControlsAway();
        offerControlsAgain();
        return m_tour.finish();
    }

private:
    void useControls();
    void takeControlsAway();
    void offerControlsAgain();

    Workbench& m_workbench;
    host::InstrumentSession& m_session = m_workbench.session();
    simulator::SimulatedInstrument& m_instrument = m_workbench.instrument();
    Tour m_tour{m_workbench.output()};

    const std::shared_ptr<IFileMemoryControl> m_files = m_workbench.require(controls::fileMemory);
    const std::shared_ptr<IPotentiometersControl> m_potentiometers = m_workbench.require(controls::potentiometers);
    const std::shared_ptr<IUsbIdControl> m_usbId = m_workbench.require(controls::usbId);
    const std::shared_ptr<ISerialNumberControl> m_serialNumber = m_workbench.require(controls::serialNumber);
    const std::shared_ptr<IMemoryOperationsControl> m_memory = m_workbench.require(controls::memoryOperations);
    const std::shared_ptr<SdkUlkSynthesisControl> m_ulkSynthesis = m_workbench.require(controls::ulkSynthesis);
    const std::shared_ptr<SdkUlkPowerControl> m_ulkPower = m_workbench.require(controls::ulkPower);
    const std::shared_ptr<SdkWn0807SynthesisControl> m_wnSynthesis = m_workbench.require(controls::wn0807Synthesis);
    const std::shared_ptr<SdkWn0807PowerControl> m_wnPower = m_workbench.require(controls::wn0807Power);
    const std::shared_ptr<SdkLoLeakageControl> m_loLeakage = m_workbench.require(controls::loLeakage);
    const std::shared_ptr<SdkKz515PowerControl> m_kzPower = m_workbench.require(controls::kz515Power);
    const std::shared_ptr<SdkKz515SynthesisControl> m_kzSynthesis = m_workbench.require(controls::kz515Synthesis);
    const std::shared_ptr<SdkYqSynthesisControl> m_yq = m_workbench.require(controls::yqSynthesis);
    const std::shared_ptr<ISystemTermsControl> m_terms = m_workbench.require(controls::systemTerms);
    const std::shared_ptr<SdkYqIfswCalibrationControl> m_ifsw = m_workbench.require(controls::ifswCalibration);
    const std::shared_ptr<SdkYqFactoryPowerCalibrationControl> m_power =
        m_workbench.require(controls::factoryPowerCalibration);
    const std::shared_ptr<SdkFactoryCorrectionControl> m_corrections =
        m_workbench.require(controls::factoryCorrections);
    const std::shared_ptr<SdkTemperatureControl> m_temperature = m_workbench.require(controls::temperature);
    const std::shared_ptr<SdkCalibrationControlHandle> m_controller1 =
        m_workbench.require(controls::calibrationController1);
    const std::shared_ptr<SdkCalibrationControlHandle> m_controller2 =
        m_workbench.require(controls::calibrationController2);

    SerialNumberCounter m_serialNumbers;
    CorrectionCounter m_correctionCounter;
    StateCounter<SdkYqIfswCalibrationControl::Observer> m_ifswStates;
    StateCounter<SdkYqFactoryPowerCalibrationControl::Observer> m_powerStates;
    const Observing<ISerialNumberControl, SerialNumberCounter> m_observingSerialNumber{m_serialNumber, m_serialNumbers};
    const Observing<SdkFactoryCorrectionControl, CorrectionCounter> m_observingCorrections{m_corrections,
                                                                                           m_correctionCounter};
    const Observing<SdkYqIfswCalibrationControl, decltype(m_ifswStates)> m_observingIfsw{m_ifsw, m_ifswStates};
    const Observing<SdkYqFactoryPowerCalibrationControl, decltype(m_powerStates)> m_observingPower{m_power,
                                                                                                   m_powerStates};
    const SignalCounter m_signals1{*m_controller1};
    const SignalCounter m_signals2{*m_controller2};
    simulator::CalibrationUnit& m_unit1 = m_instrument.calibrationUnit(controls::calibrationController1.keys.sdk);
    simulator::CalibrationUnit& m_unit2 = m_instrument.calibrationUnit(controls::calibrationController2.keys.sdk);
    const QByteArray m_note{"measured twice"};
    double m_warm = 0.0;
    int m_powerChanges = 0;
    std::atomic<int> m_temperatureChanges = 0;
    const QObject m_here; // the connections end with it
};

void Demo::useControls()
{
    m_tour.chapter("The library is loaded from " + host::loadedLibraryPath().toStdString()
                   + ", a simulated instrument is open.");
    m_tour.chapter("The controls are read and set.");
    m_tour.check(controls::fileMemory, "a file is stored and read back",
                 m_files->writeFile("note.txt", m_note) && m_files->readFile({"note.txt", 0, 0}) == m_note);
    const std::vector<std::byte> pattern(16, std::byte{0x5A});
    const auto contents =
        m_memory->write(pattern) ? m_memory->read() : std::unexpected(decltype(m_memory->read())::error_type());
    m_tour.check(controls::memoryOperations, "holds what was written and is intact",
                 contents && std::ranges::equal(pattern, *contents | std::views::take(16))
                     && m_memory->integrityCheck());
    m_tour.check(controls::potentiometers, "a value is kept in EEPROM",
                 m_potentiometers->writeToEeprom(0, 42) && m_potentiometers->readFromEeprom(0) == 42);
    m_tour.check(controls::serialNumber, "is written and read back",
                 m_serialNumber->writeSerialNumber(777) && m_serialNumber->serialNumber() == 777U);
    m_instrument.waitUntilQuiet();
    m_tour.check(controls::serialNumber, "an observer was told of it", m_serialNumbers.count == 1);
    auto id = m_usbId->usbId();
    id.id3 = 7;
    m_tour.check(controls::usbId, "that of a " + id.modelName + " is written and read back",
                 m_usbId->writeUsbId(id) && m_usbId->usbId().id3 == 7);
    m_terms->writeSystemTerms(QDateTime::currentDateTimeUtc(), 1.0, {{1, 0.5, 2}}, {});
    m_tour.check(controls::systemTerms, "are stored with their records",
                 m_terms->systemTermsFlag() && m_terms->termsRecords().size() == 1);
    m_loLeakage->setEnabled(true);
    m_tour.check(controls::loLeakage, "is on after it was switched on", m_loLeakage->isEnabled());
    m_yq->enableManualIf(true);
    m_yq->setSelectedIf(1);
    m_tour.check(controls::yqSynthesis, "IF 1 is chosen manually after it was set",
                 m_yq->manualIfEnabled() && m_yq->selectedIf() == 1);
    m_ulkSynthesis->setSelectedIf(2);
    m_tour.check(controls::ulkSynthesis, "another IF is selected", m_ulkSynthesis->selectedIf() == 2);
    m_ulkPower->setRfPower(7);
    m_tour.check(controls::ulkPower, "a power is set and told by a signal",
                 m_ulkPower->rfPower() == 7 && m_powerChanges == 1);
    m_kzPower->setDacModeUnion(true);
    m_kzPower->setUnionDac(77);
    m_tour.check(controls::kz515Power, "both DACs act as one", m_kzPower->dacA() == 77 && m_kzPower->dacB() == 77);
    m_kzSynthesis->setReferenceFrequency(100e6);
    m_tour.check(controls::kz515Synthesis, "another reference frequency is chosen",
                 m_kzSynthesis->currentReferenceFrequency() == 100e6);
    m_wnPower->setAttenuationDb(10.0);
    m_tour.check(controls::wn0807Power, "10 dB are 40 steps of attenuation", m_wnPower->attenuationStep() == 40);
    m_wnSynthesis->setRfPowerRangePower(0, 33);
    m_tour.check(controls::wn0807Synthesis, "the power table is changed and the factory's is not",
                 m_wnSynthesis->rfPowerRangeTable()[0].power == 33
                     && m_wnSynthesis->rfPowerDefaultRangeTable()[0].power != 33);
    m_ifsw->saveCalibrationData({.values = {1e9}, .groups = {}});
    m_power->saveCalibrationData(std::chrono::sys_seconds(std::chrono::seconds(1'700'000'000)), 1.0, {{}});
    m_instrument.waitUntilQuiet();
    m_tour.check(controls::ifswCalibration, "gives a plan, is saved and tells of its states",
                 !m_ifsw->frequencyPlan().segments.empty() && m_instrument.storedIfswCalibration()
                     && m_ifswStates.count == 2);
    m_tour.check(controls::factoryPowerCalibration, "gives a plan, is saved and tells of its states",
                 !m_power->frequencyPlan().segments.empty() && m_instrument.storedFactoryPowerCalibration()
                     && m_powerStates.count == 2);
    m_corrections->setEnabled(FactoryCorrection::Correction3, true);
    m_corrections->setEnabled(FactoryCorrection::Correction6, true);
    m_instrument.waitUntilQuiet();
    m_tour.check(controls::factoryCorrections, "one is switched on and told of, one that is not valid is refused",
                 m_corrections->isEnabled(FactoryCorrection::Correction3)
                     && !m_corrections->isEnabled(FactoryCorrection::Correction6) && m_correctionCounter.switched == 1);
    m_instrument.passTime(std::chrono::minutes(5));
    m_instrument.waitUntilQuiet();
    m_warm = m_temperature->temperature();
    m_tour.check(controls::temperature, "the instrument warms up and a signal tells of it",
                 m_warm > 30.0 && m_temperature->modulesTemperature().size() >= 8 && m_temperatureChanges == 1);
    m_unit1.beginSave(100);
    m_unit2.setConfiguration("4 ports");
    m_instrument.waitUntilQuiet();
    m_tour.check(controls::calibrationController1, "a save is told by signals", m_signals1.percent == 100);
    m_tour.check(controls::calibrationController2, "a new configuration is told by a signal",
                 m_signals2.configurations == 1);
}

void Demo::takeControlsAway()
{
    m_tour.chapter("The instrument takes its controls away.");
    m_session.releaseControls([&] { m_instrument.releaseControls(); });
    const auto list = m_files->fileList();
    m_tour.check(controls::fileMemory, "says " + (list ? "nothing" : list.error().toStdString()), !list);
    m_tour.check(controls::memoryOperations, "fails", !m_memory->read());
    m_tour.check(controls::potentiometers, "fail", !m_potentiometers->readFromEeprom(0));
    m_tour.check(controls::serialNumber, "fails", !m_serialNumber->serialNumber());
    m_tour.check(controls::usbId, "reads as its default", m_usbId->usbId().tag == 1 && m_usbId->usbIds().empty());
    m_tour.check(controls::systemTerms, "are none", m_terms->termsRecords().empty());
    m_tour.check(controls::loLeakage, "reads as off", !m_loLeakage->isEnabled());
    m_loLeakage->setEnabled(false);
    m_tour.check(controls::yqSynthesis, "the selected IF reads as -1, and there are none",
                 m_yq->selectedIf() == -1 && m_yq->supportedIfs().empty());
    m_tour.check(controls::ulkSynthesis, "the selected IF reads as 0, and there are none",
                 m_ulkSynthesis->selectedIf() == 0 && m_ulkSynthesis->supportedIfs().empty());
    m_ulkPower->setRfPower(8);
    m_tour.check(controls::ulkPower, "the power reads as 0, and setting it tells nothing",
                 m_ulkPower->rfPower() == 0 && m_powerChanges == 1);
    m_tour.check(controls::kz515Power, "the DACs read as 0", m_kzPower->dacA() == 0 && !m_kzPower->isDacModeUnion());
    m_tour.check(controls::kz515Synthesis, "there are no frequencies",
                 m_kzSynthesis->availableReferenceFrequencies().empty());
    m_tour.check(controls::wn0807Power, "the attenuation reads as 0", m_wnPower->attenuationDb() == 0.0);
    m_tour.check(controls::wn0807Synthesis, "there is no table", m_wnSynthesis->rfPowerRangeTable().empty());
    m_tour.check(controls::ifswCalibration, "there is no plan", m_ifsw->frequencyPlan().segments.empty());
    m_tour.check(controls::factoryPowerCalibration, "there is no plan", m_power->frequencyPlan().segments.empty());
    m_tour.check(controls::factoryCorrections, "there are none", m_corrections->supported().empty());
    m_tour.check(controls::temperature, "stays as it was last", m_temperature->temperature() == m_warm);
    m_tour.check(controls::calibrationController1, "is not there", !m_controller1->lock());
    m_tour.check(controls::calibrationController2, "is not there", !m_controller2->lock());
}

void Demo::offerControlsAgain()
{
    m_tour.chapter("The instrument offers its controls again; the same objects find them.");
    m_session.offerControls([&] { m_instrument.offerControls(); });
    m_tour.check(controls::fileMemory, "the file is there", m_files->readFile({"note.txt", 0, 0}) == m_note);
    m_tour.check(controls::memoryOperations, "is intact", m_memory->integrityCheck().has_value());
    m_tour.check(controls::potentiometers, "the value is there", m_potentiometers->readFromEeprom(0) == 42);
    const bool written = m_serialNumber->writeSerialNumber(778).has_value();
    m_instrument.waitUntilQuiet();
    m_tour.check(controls::serialNumber, "is written, and the same observer is told of it",
                 written && m_serialNumbers.count == 2);
    m_tour.check(controls::usbId, "is the one that was written", m_usbId->usbId().id3 == 7);
    m_tour.check(controls::systemTerms, "are still stored", m_terms->systemTermsFlag());
    m_tour.check(controls::loLeakage, "is on, though it was switched off in between", m_loLeakage->isEnabled());
    m_tour.check(controls::yqSynthesis, "IF 1 is still chosen", m_yq->manualIfEnabled() && m_yq->selectedIf() == 1);
    m_ulkSynthesis->reset();
    m_tour.check(controls::ulkSynthesis, "is reset", m_ulkSynthesis->selectedIf() == 0);
    m_ulkPower->reset();
    m_tour.check(controls::ulkPower, "is reset, and a signal tells of it",
                 m_ulkPower->rfPower() == 32 && m_powerChanges == 2);
    m_tour.check(controls::kz515Power, "the DACs still act as one",
                 m_kzPower->isDacModeUnion() && m_kzPower->dacB() == 77);
    m_tour.check(controls::kz515Synthesis, "the frequency is still chosen",
                 m_kzSynthesis->currentReferenceFrequency() == 100e6);
    m_tour.check(controls::wn0807Power, "the attenuation is still set", m_wnPower->attenuationDb() == 10.0);
    m_tour.check(controls::wn0807Synthesis, "the table is still changed",
                 m_wnSynthesis->rfPowerRangeTable()[0].power == 33);
    m_ifsw->saveCalibrationData({});
    m_power->saveCalibrationData({}, 0.0, {});
    m_instrument.waitUntilQuiet();
    m_tour.check(controls::ifswCalibration, "is saved, and the same observer is told of it", m_ifswStates.count == 4);
    m_tour.check(controls::factoryPowerCalibration, "is saved, and the same observer is told of it",
                 m_powerStates.count == 4);
    m_tour.check(controls::factoryCorrections, "are as they were, and everybody was told to read them again",
                 m_corrections->isEnabled(FactoryCorrection::Correction3) && m_correctionCounter.announced == 1);
    m_tour.check(controls::temperature, "is read again, and a signal tells of it", m_temperatureChanges == 2);
    m_unit1.setStatus(simulator::CalibrationUnit::Status::Disconnected);
    m_instrument.waitUntilQuiet();
    m_tour.check(controls::calibrationController1, "the signals announced it, and tell of its unit again",
                 m_signals1.units == 2);
    m_tour.check(controls::calibrationController2, "the signals announced that its unit must be read again",
                 m_signals2.units == 1 && m_signals2.configurations == 2);
}

ExitStatus demo(Workbench& workbench)
{
    if (workbench.keepsState())
        throw CommandError(ExitStatus::BadUse, "demo has an instrument of its own: leave --state out");
    return Demo(workbench).run();
}

} // namespace

void addDemoCommand(CLI::App& app, ChosenCommand& chosen)
{
    app.add_subcommand("demo", "Show the main job on all controls: they are made, used, taken away and found again")
        ->callback([&chosen] { chosen = demo; });
}

} // namespace tov::console

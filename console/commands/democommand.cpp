#include "console/commands/commands.h"

#include "host/loadedlibrary.h"
#include "service/calibration/sdkcalibrationcontrolwatcher.h"
#include "tools/notifications/observing.h"

#include <QDateTime>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <coroutine>
#include <map>
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
        Table table({"control", "steps", {"result", "ok"}});
        int failed = 0;
        for (const host::ControlName& control : host::controls::all) {
            const Result& result = m_results[control.name];
            const bool behaved = result.steps > 0 && result.failures == 0;
            failed += behaved ? 0 : 1;
            table.addRow({std::string(control.name), result.steps,
                          behaved ? Cell("ok", true, Cell::Tone::Good) : Cell("FAILED", false, Cell::Tone::Bad)});
        }
        const auto count = std::to_string(host::controls::all.size());
        m_output.answer(m_output.shown(table)
                            + (failed == 0 ? "All " + count + " controls behaved.\n"
                                           : std::to_string(failed) + " of " + count + " controls failed.\n"),
                        {{"steps", m_steps}, {"controls", m_output.rows(table)}, {"failures", failed}});
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

/// The control that a trial is about. Throws `Failure` when the instrument lacks it.
template <typename Adapter>
class Tried
{
public:
    Tried(ConsoleSession& console, Tour& tour, const host::Control<Adapter>& kind)
        : m_console(console)
        , m_tour(tour)
        , m_kind(kind)
        , m_adapter(console.require(kind))
    {
    }

    Adapter* operator->() const { return m_adapter.get(); }
    const std::shared_ptr<Adapter>& adapter() const { return m_adapter; }
    ConsoleSession& console() const { return m_console; }

    void notify() const { m_console.notify(m_kind); }

    void check(const std::string& what, bool behaved) const { m_tour.check(m_kind, what, behaved); }

private:
    ConsoleSession& m_console;
    Tour& m_tour;
    const host::ControlName& m_kind;
    std::shared_ptr<Adapter> m_adapter;
};

/// What is tried on one control, from first use to finding it again. It waits wherever all trials go on together.
class Trial
{
public:
    // NOLINTBEGIN(readability-identifier-naming, readability-convert-member-functions-to-static): the language's names
    struct promise_type
    {
        Trial get_return_object() { return Trial(std::coroutine_handle<promise_type>::from_promise(*this)); }
        std::suspend_always initial_suspend() noexcept { return {}; }
        std::suspend_always final_suspend() noexcept { return {}; }
        void return_void() {}
        void unhandled_exception() { throw; }
    };
    // NOLINTEND(readability-identifier-naming, readability-convert-member-functions-to-static)

    Trial(const Trial&) = delete;
    Trial& operator=(const Trial&) = delete;
    ~Trial() { m_steps.destroy(); }

    /// Does what comes before the next wait.
    void goOn() { m_steps.resume(); }

private:
    explicit Trial(std::coroutine_handle<promise_type> steps)
        : m_steps(steps)
    {
    }

    const std::coroutine_handle<promise_type> m_steps;
};

constexpr std::suspend_always areTakenAway;
constexpr std::suspend_always areOfferedAgain;

Trial tryFileMemory(Tried<IFileMemoryControl> files)
{
    const QByteArray note("measured twice");
    files.check("a file is stored and read back",
                files->writeFile("note.txt", note) && files->readFile({"note.txt", 0, 0}) == note);
    co_await areTakenAway;
    const auto list = files->fileList();
    files.check("says " + (list ? "nothing" : list.error().toStdString()), !list);
    co_await areOfferedAgain;
    files.check("the file is there", files->readFile({"note.txt", 0, 0}) == note);
}

Trial tryMemoryOperations(Tried<IMemoryOperationsControl> memory)
{
    const std::vector<std::byte> pattern(16, std::byte{0x5A});
    const bool written = memory->write(pattern).has_value();
    const auto contents = memory->read();
    memory.check("holds what was written and is intact",
                 written && contents && std::ranges::equal(pattern, *contents | std::views::take(16))
                     && memory->integrityCheck());
    co_await areTakenAway;
    memory.check("fails", !memory->read());
    co_await areOfferedAgain;
    memory.check("is intact", memory->integrityCheck().has_value());
}

Trial tryPotentiometers(Tried<IPotentiometersControl> potentiometers)
{
    potentiometers.check("a value is kept in EEPROM",
                         potentiometers->writeToEeprom(0, 42) && potentiometers->readFromEeprom(0) == 42);
    co_await areTakenAway;
    potentiometers.check("fail", !potentiometers->readFromEeprom(0));
    co_await areOfferedAgain;
    potentiometers.check("the value is there", potentiometers->readFromEeprom(0) == 42);
}

class SerialNumberCounter final : public ISerialNumberControl::Observer
{
public:
    void onSerialNumberEvent(const SerialNumberEvent& /*event*/) override { ++count; }

    std::atomic<int> count = 0;
};

Trial trySerialNumber(Tried<ISerialNumberControl> serialNumber)
{
    SerialNumberCounter told;
    const Observing observing(serialNumber.adapter(), told);
    serialNumber.check("is written and read back",
                       serialNumber->writeSerialNumber(777) && serialNumber->serialNumber() == 777U);
    serialNumber.console().waitUntilQuiet();
    serialNumber.check("an observer was told of it", told.count == 1);
    co_await areTakenAway;
    serialNumber.check("fails", !serialNumber->serialNumber());
    co_await areOfferedAgain;
    const bool written = serialNumber->writeSerialNumber(778).has_value();
    serialNumber.console().waitUntilQuiet();
    serialNumber.check("is written, and the same observer is told of it", written && told.count == 2);
}

Trial tryUsbId(Tried<IUsbIdControl> usbId)
{
    auto id = usbId->usbId();
    id.id3 = 7;
    usbId.check("that of a " + id.modelName + " is written and read back",
                usbId->writeUsbId(id) && usbId->usbId().id3 == 7);
    co_await areTakenAway;
    usbId.check("reads as its default", usbId->usbId().tag == 1 && usbId->usbIds().empty());
    co_await areOfferedAgain;
    usbId.check("is the one that was written", usbId->usbId().id3 == 7);
}

Trial trySystemTerms(Tried<ISystemTermsControl> terms)
{
    terms->writeSystemTerms(QDateTime::currentDateTimeUtc(), 1.0, {{1, 0.5, 2}}, {});
    terms.check("are stored with their records", terms->systemTermsFlag() && terms->termsRecords().size() == 1);
    co_await areTakenAway;
    terms.check("are none", terms->termsRecords().empty());
    co_await areOfferedAgain;
    terms.check("are still stored", terms->systemTermsFlag());
}

Trial tryLoLeakage(Tried<SdkLoLeakageControl> loLeakage)
{
    loLeakage->setEnabled(true);
    loLeakage.check("is on after it was switched on", loLeakage->isEnabled());
    co_await areTakenAway;
    loLeakage.check("reads as off", !loLeakage->isEnabled());
    loLeakage->setEnabled(false);
    co_await areOfferedAgain;
    loLeakage.check("is on, though it was switched off in between", loLeakage->isEnabled());
}

Trial tryYqSynthesis(Tried<SdkYqSynthesisControl> yq)
{
    yq->enableManualIf(true);
    yq->setSelectedIf(1);
    yq.check("IF 1 is chosen manually after it was set", yq->manualIfEnabled() && yq->selectedIf() == 1);
    co_await areTakenAway;
    yq.check("the selected IF reads as -1, and there are none", yq->selectedIf() == -1 && yq->supportedIfs().empty());
    co_await areOfferedAgain;
    yq.check("IF 1 is still chosen", yq->manualIfEnabled() && yq->selectedIf() == 1);
}

Trial tryUlkSynthesis(Tried<SdkUlkSynthesisControl> ulk)
{
    ulk->setSelectedIf(2);
    ulk.check("another IF is selected", ulk->selectedIf() == 2);
    co_await areTakenAway;
    ulk.check("the selected IF reads as 0, and there are none", ulk->selectedIf() == 0 && ulk->supportedIfs().empty());
    co_await areOfferedAgain;
    ulk->reset();
    ulk.check("is reset", ulk->selectedIf() == 0);
}

Trial tryUlkPower(Tried<SdkUlkPowerControl> ulk)
{
    int changes = 0;
    const QObject here; // the connection ends with it
    QObject::connect(
        ulk.adapter().get(), &SdkUlkPowerControl::rfPowerChanged, &here, [&changes] { ++changes; },
        Qt::DirectConnection);
    ulk->setRfPower(7);
    ulk.check("a power is set and told by a signal", ulk->rfPower() == 7 && changes == 1);
    co_await areTakenAway;
    ulk->setRfPower(8);
    ulk.check("the power reads as 0, and setting it tells nothing", ulk->rfPower() == 0 && changes == 1);
    co_await areOfferedAgain;
    ulk->reset();
    ulk.check("is reset, and a signal tells of it", ulk->rfPower() == 32 && changes == 2);
}

Trial tryKz515Power(Tried<SdkKz515PowerControl> kz)
{
    kz->setDacModeUnion(true);
    kz->setUnionDac(77);
    kz.check("both DACs act as one", kz->dacA() == 77 && kz->dacB() == 77);
    co_await areTakenAway;
    kz.check("the DACs read as 0", kz->dacA() == 0 && !kz->isDacModeUnion());
    co_await areOfferedAgain;
    kz.check("the DACs still act as one", kz->isDacModeUnion() && kz->dacB() == 77);
}

Trial tryKz515Synthesis(Tried<SdkKz515SynthesisControl> kz)
{
    kz->setReferenceFrequency(100e6);
    kz.check("another reference frequency is chosen", kz->currentReferenceFrequency() == 100e6);
    co_await areTakenAway;
    kz.check("there are no frequencies", kz->availableReferenceFrequencies().empty());
    co_await areOfferedAgain;
    kz.check("the frequency is still chosen", kz->currentReferenceFrequency() == 100e6);
}

Trial tryWn0807Power(Tried<SdkWn0807PowerControl> wn)
{
    wn->setAttenuationDb(10.0);
    wn.check("10 dB are 40 steps of attenuation", wn->attenuationStep() == 40);
    co_await areTakenAway;
    wn.check("the attenuation reads as 0", wn->attenuationDb() == 0.0);
    co_await areOfferedAgain;
    wn.check("the attenuation is still set", wn->attenuationDb() == 10.0);
}

Trial tryWn0807Synthesis(Tried<SdkWn0807SynthesisControl> wn)
{
    wn->setRfPowerRangePower(0, 33);
    wn.check("the power table is changed and the factory's is not",
             wn->rfPowerRangeTable()[0].power == 33 && wn->rfPowerDefaultRangeTable()[0].power != 33);
    co_await areTakenAway;
    wn.check("there is no table", wn->rfPowerRangeTable().empty());
    co_await areOfferedAgain;
    wn.check("the table is still changed", wn->rfPowerRangeTable()[0].power == 33);
}

template <typename Observer>
class StateCounter final : public Observer
{
public:
    void onFirstEvent() override {}
    void onSecondEvent() override {}
    void onThirdEvent() override {}
    void onStateChanged(CalibrationState /*state*/) override { ++count; }

    std::atomic<int> count = 0;
};

Trial tryIfswCalibration(Tried<SdkYqIfswCalibrationControl> ifsw)
{
    StateCounter<SdkYqIfswCalibrationControl::Observer> told;
    const Observing observing(ifsw.adapter(), told);
    ifsw->saveCalibrationData({.values = {1e9}, .groups = {}});
    ifsw.console().waitUntilQuiet();
    ifsw.check("gives a plan, is saved and tells of its states",
               !ifsw->frequencyPlan().segments.empty() && told.count == 2);
    co_await areTakenAway;
    ifsw.check("there is no plan", ifsw->frequencyPlan().segments.empty());
    co_await areOfferedAgain;
    ifsw->saveCalibrationData({});
    ifsw.console().waitUntilQuiet();
    ifsw.check("is saved, and the same observer is told of it", told.count == 4);
}

Trial tryFactoryPowerCalibration(Tried<SdkYqFactoryPowerCalibrationControl> power)
{
    StateCounter<SdkYqFactoryPowerCalibrationControl::Observer> told;
    const Observing observing(power.adapter(), told);
    power->saveCalibrationData(std::chrono::sys_seconds(std::chrono::seconds(1'700'000'000)), 1.0, {{}});
    power.console().waitUntilQuiet();
    power.check("gives a plan, is saved and tells of its states",
                !power->frequencyPlan().segments.empty() && told.count == 2);
    co_await areTakenAway;
    power.check("there is no plan", power->frequencyPlan().segments.empty());
    co_await areOfferedAgain;
    power->saveCalibrationData({}, 0.0, {});
    power.console().waitUntilQuiet();
    power.check("is saved, and the same observer is told of it", told.count == 4);
}

class CorrectionCounter final : public SdkFactoryCorrectionControl::Observer
{
public:
    void onCorrectionsChanged() override { ++announced; }
    void onCorrectionStatesChanged() override {}
    void onEnabledChanged(FactoryCorrection /*correction*/, bool /*enabled*/) override { ++switched; }

    std::atomic<int> announced = 0;
    std::atomic<int> switched = 0;
};

Trial tryFactoryCorrections(Tried<SdkFactoryCorrectionControl> corrections)
{
    CorrectionCounter told;
    const Observing observing(corrections.adapter(), told);
    corrections->setEnabled(FactoryCorrection::Correction3, true);
    corrections->setEnabled(FactoryCorrection::Correction6, true);
    corrections.console().waitUntilQuiet();
    corrections.check("one is switched on and told of, one that is not valid is refused",
                      corrections->isEnabled(FactoryCorrection::Correction3)
                          && !corrections->isEnabled(FactoryCorrection::Correction6) && told.switched == 1);
    co_await areTakenAway;
    corrections.check("there are none", corrections->supported().empty());
    co_await areOfferedAgain;
    corrections.check("are as they were, and everybody was told to read them again",
                      corrections->isEnabled(FactoryCorrection::Correction3) && told.announced == 1);
}

Trial tryTemperature(Tried<SdkTemperatureControl> temperature)
{
    std::atomic<int> changes = 0;
    const QObject here; // the connection ends with it
    QObject::connect(
        temperature.adapter().get(), &SdkTemperatureControl::temperaturesChanged, &here, [&changes] { ++changes; },
        Qt::DirectConnection);
    temperature.console().passTime(std::chrono::minutes(5));
    const double warm = temperature->temperature();
    temperature.check("the instrument warms up and a signal tells of it",
                      warm > 30.0 && temperature->modulesTemperature().size() >= 8 && changes == 1);
    co_await areTakenAway;
    temperature.check("stays as it was last", temperature->temperature() == warm);
    co_await areOfferedAgain;
    temperature.check("is read again, and a signal tells of it", changes == 2);
}

/// Counts what the watcher of a calibration controller emits.
class SignalCounter
{
public:
    explicit SignalCounter(SdkCalibrationControlHandle& handle)
        : m_watcher(handle)
    {
        using Watcher = SdkCalibrationControlWatcher;
        QObject::connect(&m_watcher, &Watcher::unitStatusChanged, [this] { ++units; });
        QObject::connect(&m_watcher, &Watcher::saveProgressChanged, [this](int newPercent) { percent = newPercent; });
        QObject::connect(&m_watcher, &Watcher::configurationChanged, [this] { ++configurations; });
    }

    std::atomic<int> units = 0;
    std::atomic<int> percent = 0;
    std::atomic<int> configurations = 0;

private:
    SdkCalibrationControlWatcher m_watcher;
};

Trial tryCalibrationController1(Tried<SdkCalibrationControlHandle> controller)
{
    const SignalCounter told(*controller.adapter());
    controller.notify();
    controller.check("a save is told by signals", told.percent == 100);
    const int before = told.units;
    co_await areTakenAway;
    controller.check("is not there", !controller->lock());
    co_await areOfferedAgain;
    const int announced = told.units;
    controller.notify();
    controller.check("the signals announced it, and tell of its unit again",
                     announced == before + 1 && told.units > announced);
}

Trial tryCalibrationController2(Tried<SdkCalibrationControlHandle> controller)
{
    const SignalCounter told(*controller.adapter());
    controller.notify();
    controller.check("a new configuration is told by a signal", told.configurations > 0);
    const int units = told.units;
    const int configurations = told.configurations;
    co_await areTakenAway;
    controller.check("is not there", !controller->lock());
    co_await areOfferedAgain;
    controller.check("the signals announced that its unit must be read again",
                     told.units == units + 1 && told.configurations == configurations + 1);
}

ExitStatus demo(ConsoleSession& console)
{
    if (console.keepsState())
        throw BadUse("demo has an instrument of its own: leave --state out");
    using Ability = provider::ITestHooks::Ability;
    for (const Ability ability :
         {Ability::ReleaseAndOffer, Ability::Notify, Ability::PassTime, Ability::WaitUntilQuiet})
        if (!console.can(ability))
            throw Failure("demo needs an instrument that tests may do everything to, such as the simulated one");

    Tour tour(console.output());
    std::array trials = {tryFileMemory({console, tour, controls::fileMemory}),
                         tryMemoryOperations({console, tour, controls::memoryOperations}),
                         tryPotentiometers({console, tour, controls::potentiometers}),
                         trySerialNumber({console, tour, controls::serialNumber}),
                         tryUsbId({console, tour, controls::usbId}),
                         trySystemTerms({console, tour, controls::systemTerms}),
                         tryLoLeakage({console, tour, controls::loLeakage}),
                         tryYqSynthesis({console, tour, controls::yqSynthesis}),
                         tryUlkSynthesis({console, tour, controls::ulkSynthesis}),
                         tryUlkPower({console, tour, controls::ulkPower}),
                         tryKz515Power({console, tour, controls::kz515Power}),
                         tryKz515Synthesis({console, tour, controls::kz515Synthesis}),
                         tryWn0807Power({console, tour, controls::wn0807Power}),
                         tryWn0807Synthesis({console, tour, controls::wn0807Synthesis}),
                         tryIfswCalibration({console, tour, controls::ifswCalibration}),
                         tryFactoryPowerCalibration({console, tour, controls::factoryPowerCalibration}),
                         tryFactoryCorrections({console, tour, controls::factoryCorrections}),
                         tryTemperature({console, tour, controls::temperature}),
                         tryCalibrationController1({console, tour, controls::calibrationController1}),
                         tryCalibrationController2({console, tour, controls::calibrationController2})};
    const auto goOn = [&] { std::ranges::for_each(trials, &Trial::goOn); };

    tour.chapter("The library is loaded from " + host::loadedLibraryPath().toStdString() + ", a "
                 + console.instrument().model.toStdString() + " instrument is open.");
    tour.chapter("The controls are read and set.");
    goOn();
    tour.chapter("The instrument takes its controls away.");
    console.releaseControls();
    goOn();
    tour.chapter("The instrument offers its controls again; the same objects find them.");
    console.offerControls();
    goOn();
    return tour.finish();
}

} // namespace

void addDemoCommand(Command& program)
{
    program.add("demo", "Show the main job on all controls: they are made, used, taken away and found again")
        .footer(exitStatusesHelp())
        .runs(demo);
}

} // namespace tov::console

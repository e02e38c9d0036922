#include "tools/notifications/hearing.h"

#include "service/calibration/sdkcalibrationcontrolwatcher.h"
#include "tools/notifications/observing.h"

#include <cstdint>
#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace tov::inline tools {

namespace {

using devices::FactoryCorrection;
using devices::service::IMemoryOperationsControl;
using devices::service::ISerialNumberControl;
using devices::service::ISystemTermsControl;
using devices::service::MemoryOperationEvent;
using devices::service::SdkCalibrationControlHandle;
using devices::service::SdkCalibrationControlWatcher;
using devices::service::SdkFactoryCorrectionControl;
using devices::service::SdkTemperatureControl;
using devices::service::SdkUlkPowerControl;
using devices::service::SerialNumberEvent;

class Ear final : public IMemoryOperationsControl::IObserver,
                  public ISerialNumberControl::Observer,
                  public ISystemTermsControl::Observer,
                  public SdkFactoryCorrectionControl::Observer
{
public:
    explicit Ear(const NotificationSink& told)
        : m_told(told)
    {
    }

    void onNotification1(const MemoryOperationEvent& event) override { tellMemory("notification1", event); }
    void onNotification2(const MemoryOperationEvent& event) override { tellMemory("notification2", event); }
    void onNotification3(const MemoryOperationEvent& event) override { tellMemory("notification3", event); }
    void onNotification4(const MemoryOperationEvent& event) override { tellMemory("notification4", event); }

    void onSerialNumberEvent(const SerialNumberEvent& event) override
    {
        m_told(host::controls::serialNumber.name, "event",
               {static_cast<double>(event.first), static_cast<double>(event.second)});
    }

    void onTermsNotice() override { tellTerms("notice"); }
    void onTermsValue(unsigned int value) override { tellTerms("value", {static_cast<double>(value)}); }
    void onTermsSecondNotice() override { tellTerms("second-notice"); }
    void onTermsStatus(ISystemTermsControl::Status status) override
    {
        tellTerms("status", {static_cast<double>(status)});
    }

    void onCorrectionsChanged() override { tellCorrections("corrections"); }
    void onCorrectionStatesChanged() override { tellCorrections("states"); }
    void onEnabledChanged(FactoryCorrection correction, bool enabled) override
    {
        tellCorrections(enabled ? "enabled" : "disabled", {static_cast<double>(correction) + 1});
    }

private:
    void tellMemory(const char* name, const MemoryOperationEvent& event)
    {
        m_told(host::controls::memoryOperations.name, name,
               {static_cast<double>(event.first), static_cast<double>(event.second)});
    }
    void tellTerms(const char* name, std::initializer_list<double> numbers = {})
    {
        m_told(host::controls::systemTerms.name, name, numbers);
    }
    void tellCorrections(const char* name, std::initializer_list<double> numbers = {})
    {
        m_told(host::controls::factoryCorrections.name, name, numbers);
    }

    const NotificationSink& m_told;
};

template <typename Observer>
class CalibrationEar final : public Observer
{
public:
    CalibrationEar(const NotificationSink& told, const host::ControlName& control)
        : m_told(told)
        , m_control(control.name)
    {
    }

    void onFirstEvent() override { m_told(m_control, "first-event", {}); }
    void onSecondEvent() override { m_told(m_control, "second-event", {}); }
    void onThirdEvent() override { m_told(m_control, "third-event", {}); }
    void onStateChanged(devices::service::CalibrationState state) override
    {
        m_told(m_control, "state", {static_cast<double>(state)});
    }

private:
    const NotificationSink& m_told;
    const std::string_view m_control;
};

/// Hears the signals of the controls that have some. They may come from the instrument's thread.
class SignalEar
{
public:
    explicit SignalEar(const std::shared_ptr<const NotificationSink>& told)
        : m_told(told)
    {
    }
    SignalEar(const SignalEar&) = delete;
    SignalEar& operator=(const SignalEar&) = delete;
    ~SignalEar()
    {
        for (const auto& connection : m_connections)
            QObject::disconnect(connection);
    }

    void hear(const SdkTemperatureControl& sender, const host::ControlName& control)
    {
        hear(sender, &SdkTemperatureControl::temperaturesChanged, control, "changed");
    }

    // One by one: in a table of constants the addresses of a DLL's signals are not those that Qt knows them by.
    void hear(const SdkUlkPowerControl& sender, const host::ControlName& control)
    {
        using Ulk = SdkUlkPowerControl;
        const auto hearAs = [&](const char* name, void (Ulk::*signal)()) { hear(sender, signal, control, name); };
        hearAs("lo-power-changed", &Ulk::loPowerChanged);
        hearAs("rf-power-changed", &Ulk::rfPowerChanged);
        hearAs("synt-power-mode-changed", &Ulk::syntPowerModeChanged);
        hearAs("attenuation-step-changed", &Ulk::attenuationStepChanged);
        hearAs("step-attenuator-mode-changed", &Ulk::stepAttenuatorModeChanged);
        hearAs("discrete-attenuator-changed", &Ulk::discreteAttenuatorEnabledChanged);
        hearAs("discrete-attenuator-mode-changed", &Ulk::discreteAttenuatorModeChanged);
        hearAs("attenuation-mode-changed", &Ulk::attenuationModeChanged);
        hearAs("common-attenuation-mode-changed", &Ulk::commonAttenuationModeChanged);
        hearAs("common-attenuation-step-changed", &Ulk::commonAttenuationStepChanged);
        hearAs("amp-t-port1-changed", &Ulk::ampTPort1Changed);
        hearAs("amp-t-port2-changed", &Ulk::ampTPort2Changed);
        hearAs("amp-r-port1-changed", &Ulk::ampRPort1Changed);
    }

    void hear(SdkCalibrationControlHandle& handle, const host::ControlName& control)
    {
        auto& watcher = *m_watchers.emplace_back(std::make_unique<SdkCalibrationControlWatcher>(handle));
        hear(watcher, &SdkCalibrationControlWatcher::unitStatusChanged, control, "unit-status-changed");
        hear(watcher, &SdkCalibrationControlWatcher::configurationChanged, control, "configuration-changed");
        m_connections.push_back(QObject::connect(&watcher, &SdkCalibrationControlWatcher::saveProgressChanged,
                                                 [told = m_told, name = control.name](int percent) {
                                                     (*told)(name, "save-progress", {static_cast<double>(percent)});
                                                 }));
    }

private:
    template <typename Sender>
    void hear(const Sender& sender, void (Sender::*signal)(), const host::ControlName& control, const char* name)
    {
        m_connections.push_back(QObject::connect(
            &sender, signal, [told = m_told, control = control.name, name] { (*told)(control, name, {}); }));
    }

    const std::shared_ptr<const NotificationSink> m_told; // slots that still run at the end have a share of it
    std::vector<QMetaObject::Connection> m_connections;
    std::vector<std::unique_ptr<SdkCalibrationControlWatcher>> m_watchers; // go before the rest
};

} // namespace

struct Hearing::Ears
{
    Ears(host::InstrumentSession& itsSession, const std::shared_ptr<const NotificationSink>& told,
         NotHeardSink itsNotHeard)
        : session(itsSession)
        , notHeard(std::move(itsNotHeard))
        , ear(*told)
        , ifswEar(*told, host::controls::ifswCalibration)
        , powerEar(*told, host::controls::factoryPowerCalibration)
        , signalEar(told)
    {
    }

    // Once for each control: one that was heard stays so while it goes and comes.
    template <typename Exposed, typename Hear>
    void begin(const host::Control<Exposed>& kind, Hear hear)
    {
        if (heard.contains(kind.keys.registry))
            return;
        try {
            if (const auto control = session.control(kind)) {
                hear(control);
                heard.insert(kind.keys.registry);
            }
        } catch (...) {
            if (!notHeard)
                throw;
            notHeard(kind, std::current_exception());
        }
    }

    template <typename Exposed, typename Observer>
    void observe(const host::Control<Exposed>& kind, Observer& observer)
    {
        begin(kind, [&](const std::shared_ptr<Exposed>& control) {
            observing.push_back(std::make_shared<Observing<Exposed, Observer>>(control, observer));
        });
    }

    template <typename Exposed>
    void hearSignals(const host::Control<Exposed>& kind)
    {
        begin(kind, [&](const std::shared_ptr<Exposed>& control) { signalEar.hear(*control, kind); });
    }

    host::InstrumentSession& session;
    const NotHeardSink notHeard;
    Ear ear;
    CalibrationEar<devices::service::SdkYqIfswCalibrationControl::Observer> ifswEar;
    CalibrationEar<devices::service::SdkYqFactoryPowerCalibrationControl::Observer> powerEar;
    SignalEar signalEar;
    std::vector<std::shared_ptr<void>> observing; // ends before the observers do
    std::set<std::uint64_t> heard;
};

Hearing::Hearing(host::InstrumentSession& session, NotificationSink told, NotHeardSink notHeard)
    : m_told(std::make_shared<const NotificationSink>(std::move(told)))
    , m_ears(std::make_unique<Ears>(session, m_told, std::move(notHeard)))
{
    hearWhatIsThere();
}

Hearing::~Hearing() = default;

void Hearing::hearWhatIsThere()
{
    namespace controls = host::controls;
    m_ears->observe(controls::memoryOperations, m_ears->ear);
    m_ears->observe(controls::serialNumber, m_ears->ear);
    m_ears->observe(controls::systemTerms, m_ears->ear);
    m_ears->observe(controls::factoryCorrections, m_ears->ear);
    m_ears->observe(controls::ifswCalibration, m_ears->ifswEar);
    m_ears->observe(controls::factoryPowerCalibration, m_ears->powerEar);
    m_ears->hearSignals(controls::temperature); // behind the others, as adapters hear of the instrument in their order
    m_ears->hearSignals(controls::ulkPower);
    m_ears->hearSignals(controls::calibrationController1);
    m_ears->hearSignals(controls::calibrationController2);
}

bool Hearing::hearsNothing() const
{
    return m_ears->heard.empty();
}

} // namespace tov::inline tools

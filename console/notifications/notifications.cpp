#include "console/notifications/notifications.h"

#include "console/notifications/observing.h"
#include "service/calibration/sdkcalibrationcontrolwatcher.h"

#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace tov::console {

namespace {

using devices::FactoryCorrection;
using devices::service::IMemoryOperationsControl;
using devices::service::ISerialNumberControl;
using devices::service::ISystemTermsControl;
using devices::service::MemoryOperationEvent;
using devices::service::SdkFactoryCorrectionControl;
using devices::service::SerialNumberEvent;

class Printer final : public IMemoryOperationsControl::IObserver,
                      public ISerialNumberControl::Observer,
                      public ISystemTermsControl::Observer,
                      public SdkFactoryCorrectionControl::Observer
{
public:
    explicit Printer(NotificationLines& lines)
        : m_lines(lines)
    {
    }

    void onNotification1(const MemoryOperationEvent& event) override { printMemory("notification1", event); }
    void onNotification2(const MemoryOperationEvent& event) override { printMemory("notification2", event); }
    void onNotification3(const MemoryOperationEvent& event) override { printMemory("notification3", event); }
    void onNotification4(const MemoryOperationEvent& event) override { printMemory("notification4", event); }

    void onSerialNumberEvent(const SerialNumberEvent& event) override
    {
        m_lines.print(host::controls::serialNumber.name, "event",
                      {static_cast<double>(event.first), static_cast<double>(event.second)});
    }

    void onTermsNotice() override { printTerms("notice"); }
    void onTermsValue(unsigned int value) override { printTerms("value", {static_cast<double>(value)}); }
    void onTermsSecondNotice() override { printTerms("second-notice"); }
    void onTermsStatus(ISystemTermsControl::Status status) override
    {
        printTerms("status", {static_cast<double>(status)});
    }

    void onCorrectionsChanged() override { printCorrections("corrections"); }
    void onCorrectionStatesChanged() override { printCorrections("states"); }
    void onEnabledChanged(FactoryCorrection correction, bool enabled) override
    {
        printCorrections(enabled ? "enabled" : "disabled", {static_cast<double>(correction) + 1});
    }

private:
    void printMemory(const char* name, const MemoryOperationEvent& event)
    {
        m_lines.print(host::controls::memoryOperations.name, name,
                      {static_cast<double>(event.first), static_cast<double>(event.second)});
    }
    void printTerms(const char* name, std::initializer_list<double> numbers = {})
    {
        m_lines.print(host::controls::systemTerms.name, name, numbers);
    }
    void printCorrections(const char* name, std::initializer_list<double> numbers = {})
    {
        m_lines.print(host::controls::factoryCorrections.name, name, numbers);
    }

    NotificationLines& m_lines;
};

template <typename Observer>
class CalibrationPrinter final : public Observer
{
public:
    CalibrationPrinter(NotificationLines& lines, const host::ControlName& control)
        : m_lines(lines)
        , m_control(control.name)
    {
    }

    void onFirstEvent() override { m_lines.print(m_control, "first-event"); }
    void onSecondEvent() override { m_lines.print(m_control, "second-event"); }
    void onThirdEvent() override { m_lines.print(m_control, "third-event"); }
    void onStateChanged(devices::service::CalibrationState state) override
    {
        m_lines.print(m_control, "state", {static_cast<double>(state)});
    }

private:
    NotificationLines& m_lines;
    const std::string_view m_control;
};

/// Prints the signals of the controls that have some. They may come from the instrument's thread.
class SignalLines
{
public:
    SignalLines(ConsoleSession& console, const std::shared_ptr<NotificationLines>& lines)
        : m_lines(lines)
    {
        using devices::service::SdkCalibrationControlWatcher;
        using devices::service::SdkTemperatureControl;

        if (const auto temperature = console.session().control(host::controls::temperature))
            print(*temperature, &SdkTemperatureControl::temperaturesChanged, host::controls::temperature, "changed");
        if (const auto ulkPower = console.session().control(host::controls::ulkPower))
            printUlkPower(*ulkPower);
        for (const auto& kind : {host::controls::calibrationController1, host::controls::calibrationController2})
            if (const auto handle = console.session().control(kind)) {
                auto& watcher = *m_watchers.emplace_back(std::make_unique<SdkCalibrationControlWatcher>(*handle));
                print(watcher, &SdkCalibrationControlWatcher::unitStatusChanged, kind, "unit-status-changed");
                print(watcher, &SdkCalibrationControlWatcher::configurationChanged, kind, "configuration-changed");
                m_connections.push_back(QObject::connect(&watcher, &SdkCalibrationControlWatcher::saveProgressChanged,
                                                         [lines, control = kind.name](int percent) {
                                                             lines->print(control, "save-progress",
                                                                          {static_cast<double>(percent)});
                                                         }));
            }
    }
    SignalLines(const SignalLines&) = delete;
    SignalLines& operator=(const SignalLines&) = delete;
    ~SignalLines()
    {
        for (const auto& connection : m_connections)
            QObject::disconnect(connection);
    }

    bool isEmpty() const { return m_connections.empty(); }

private:
    // One by one: in a table of constants the addresses of a DLL's signals are not those that Qt knows them by.
    void printUlkPower(const devices::service::SdkUlkPowerControl& sender)
    {
        using Ulk = devices::service::SdkUlkPowerControl;
        const auto printAs = [&](const char* name, void (Ulk::*signal)()) {
            print(sender, signal, host::controls::ulkPower, name);
        };
        printAs("lo-power-changed", &Ulk::loPowerChanged);
        printAs("rf-power-changed", &Ulk::rfPowerChanged);
        printAs("synt-power-mode-changed", &Ulk::syntPowerModeChanged);
        printAs("attenuation-step-changed", &Ulk::attenuationStepChanged);
        printAs("step-attenuator-mode-changed", &Ulk::stepAttenuatorModeChanged);
        printAs("discrete-attenuator-changed", &Ulk::discreteAttenuatorEnabledChanged);
        printAs("discrete-attenuator-mode-changed", &Ulk::discreteAttenuatorModeChanged);
        printAs("attenuation-mode-changed", &Ulk::attenuationModeChanged);
        printAs("common-attenuation-mode-changed", &Ulk::commonAttenuationModeChanged);
        printAs("common-attenuation-step-changed", &Ulk::commonAttenuationStepChanged);
        printAs("amp-t-port1-changed", &Ulk::ampTPort1Changed);
        printAs("amp-t-port2-changed", &Ulk::ampTPort2Changed);
        printAs("amp-r-port1-changed", &Ulk::ampRPort1Changed);
    }

    template <typename Sender>
    void print(const Sender& sender, void (Sender::*signal)(), const host::ControlName& control, const char* name)
    {
        m_connections.push_back(QObject::connect(
            &sender, signal, [lines = m_lines, control = control.name, name] { lines->print(control, name); }));
    }

    const std::shared_ptr<NotificationLines> m_lines;
    std::vector<QMetaObject::Connection> m_connections;
    std::vector<std::unique_ptr<devices::service::SdkCalibrationControlWatcher>> m_watchers; // go before the rest
};

} // namespace

struct Notifications::Observers
{
    Observers(ConsoleSession& console, const std::shared_ptr<NotificationLines>& lines)
        : printer(*lines)
        , ifswPrinter(*lines, host::controls::ifswCalibration)
        , powerPrinter(*lines, host::controls::factoryPowerCalibration)
    {
        const auto observe = [&]<typename Control>(const host::Control<Control>& kind, auto& observer) {
            if (const auto control = console.session().control(kind))
                observing.push_back(std::make_shared<Observing<Control, std::remove_reference_t<decltype(observer)>>>(
                    control, observer));
        };
        observe(host::controls::memoryOperations, printer);
        observe(host::controls::serialNumber, printer);
        observe(host::controls::systemTerms, printer);
        observe(host::controls::factoryCorrections, printer);
        observe(host::controls::ifswCalibration, ifswPrinter);
        observe(host::controls::factoryPowerCalibration, powerPrinter);
        signalLines.emplace(console, lines);
        if (observing.empty() && signalLines->isEmpty())
            throw Failure("the instrument has no control that notifies");
    }

    Printer printer;
    CalibrationPrinter<devices::service::SdkYqIfswCalibrationControl::Observer> ifswPrinter;
    CalibrationPrinter<devices::service::SdkYqFactoryPowerCalibrationControl::Observer> powerPrinter;
    std::vector<std::shared_ptr<void>> observing; // ends before the observers do
    std::optional<SignalLines> signalLines;       // made last, as adapters hear of the instrument in their order
};

Notifications::Notifications(ConsoleSession& console, std::shared_ptr<CsvLog> log)
    : m_lines(std::make_shared<NotificationLines>(console, std::move(log)))
    , m_observers(std::make_unique<Observers>(console, m_lines))
{
}

Notifications::~Notifications() = default;

} // namespace tov::console

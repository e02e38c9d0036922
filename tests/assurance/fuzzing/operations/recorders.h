#pragma once

// Observers of the application that write down what they are told.

#include "operations/kind.h"
#include "service/calibration/calibrationstate.h"
#include "service/calibration/sdkcalibrationcontrolhandle.h"
#include "service/calibration/sdkcalibrationcontrolwatcher.h"
#include "service/calibration/sdkfactorycorrectioncontrol.h"
#include "service/memory/imemoryoperationscontrol.h"
#include "service/memory/iserialnumbercontrol.h"
#include "service/memory/isystemtermscontrol.h"
#include "service/monitoring/sdktemperaturecontrol.h"

#include <QObject>

#include <string>

namespace tov::testing {

class Recorder
{
public:
    Recorder(Told& told, int number)
        : m_told(told)
        , m_number(number)
    {
    }

protected:
    template <typename... Numbers>
    void hear(std::string what, Numbers... numbers)
    {
        ((what += " " + std::to_string(numbers)), ...);
        m_told.emplace_back(m_number, what);
    }

private:
    Told& m_told;
    const int m_number;
};

class SerialNumberRecorder final : public devices::service::ISerialNumberControl::Observer, Recorder
{
public:
    using Recorder::Recorder;
    void onSerialNumberEvent(const devices::service::SerialNumberEvent& event) override
    {
        hear("serial", event.first, event.second);
    }
};

class MemoryRecorder final : public devices::service::IMemoryOperationsControl::IObserver, Recorder
{
public:
    using Recorder::Recorder;
    using Event = devices::service::MemoryOperationEvent;
    void onNotification1(const Event& event) override { hear("1", event.first, event.second); }
    void onNotification2(const Event& event) override { hear("2", event.first, event.second); }
    void onNotification3(const Event& event) override { hear("3", event.first, event.second); }
    void onNotification4(const Event& event) override { hear("4", event.first, event.second); }
};

class TermsRecorder final : public devices::service::ISystemTermsControl::Observer, Recorder
{
public:
    using Recorder::Recorder;
    void onTermsNotice() override { hear("notice"); }
    void onTermsValue(unsigned int value) override { hear("value", value); }
    void onTermsSecondNotice() override { hear("second notice"); }
    void onTermsStatus(devices::service::ISystemTermsControl::Status status) override
    {
        hear("status", static_cast<unsigned int>(status));
    }
};

template <typename Adapter>
class CalibrationRecorder final : public Adapter::Observer, Recorder
{
public:
    using Recorder::Recorder;
    void onFirstEvent() override { hear("first"); }
    void onSecondEvent() override { hear("second"); }
    void onThirdEvent() override { hear("third"); }
    void onStateChanged(devices::service::CalibrationState state) override
    {
        hear("state", static_cast<unsigned int>(state));
    }
};

class CorrectionsRecorder final : public devices::service::SdkFactoryCorrectionControl::Observer, Recorder
{
public:
    using Recorder::Recorder;
    void onCorrectionsChanged() override { hear("changed"); }
    void onCorrectionStatesChanged() override { hear("states"); }
    void onEnabledChanged(devices::FactoryCorrection correction, bool enabled) override
    {
        hear("enabled", static_cast<unsigned int>(correction), enabled ? 1 : 0);
    }
};

/// Hears a signal of a temperature control as long as it lives.
class TemperatureRecorder final : Recorder
{
public:
    TemperatureRecorder(devices::service::SdkTemperatureControl& adapter, Told& told, int number)
        : Recorder(told, number)
        , m_connection(QObject::connect(&adapter, &devices::service::SdkTemperatureControl::temperaturesChanged,
                                        [this] { hear("changed"); }))
    {
    }
    TemperatureRecorder(const TemperatureRecorder&) = delete;
    TemperatureRecorder& operator=(const TemperatureRecorder&) = delete;
    ~TemperatureRecorder() { QObject::disconnect(m_connection); }

private:
    const QMetaObject::Connection m_connection;
};

/// A watcher of a calibration controller with ears for its signals.
class WatcherRecorder final : Recorder
{
public:
    WatcherRecorder(devices::service::SdkCalibrationControlHandle& handle, Told& told, int number)
        : Recorder(told, number)
        , m_watcher(handle, nullptr)
    {
        using Watcher = devices::service::SdkCalibrationControlWatcher;
        QObject::connect(&m_watcher, &Watcher::unitStatusChanged, [this] { hear("unit"); });
        QObject::connect(&m_watcher, &Watcher::saveProgressChanged, [this](int percent) { hear("progress", percent); });
        QObject::connect(&m_watcher, &Watcher::configurationChanged, [this] { hear("configuration"); });
    }

private:
    devices::service::SdkCalibrationControlWatcher m_watcher;
};

} // namespace tov::testing

#pragma once

// What observes an adapter for the callables of scripts, from when the instrument hands the adapter out until it is
// closed: so callables come and go without a word to the adapter, also while they are told.

#include "host/controls.h"
#include "python/observers.h"
#include "service/calibration/sdkcalibrationcontrolwatcher.h"

#include <memory>
#include <optional>

namespace tov::python {

using namespace devices::service;
using devices::FactoryCorrection;

/// For adapters without observers.
///
/// Thread: `attach()` and `detach()` in that of the session.
template <typename Adapter>
struct Relay
{
    void attach(Adapter& /*adapter*/) {}
    void detach(Adapter& /*adapter*/) {}
};

/// For adapters with an interface for observers, which the relay is.
template <typename Adapter, typename Observer>
struct ObservingRelay : Observer
{
    void attach(Adapter& adapter) { adapter.addObserver(this); }
    void detach(Adapter& adapter) { adapter.removeObserver(this); }
};

template <>
struct Relay<ISerialNumberControl> final : ObservingRelay<ISerialNumberControl, ISerialNumberControl::Observer>
{
    Callables<SerialNumberEvent> event;

    void onSerialNumberEvent(const SerialNumberEvent& numbers) override { event.tell(numbers); }
};

template <>
struct Relay<IMemoryOperationsControl> final
    : ObservingRelay<IMemoryOperationsControl, IMemoryOperationsControl::IObserver>
{
    Callables<MemoryOperationEvent> first;
    Callables<MemoryOperationEvent> second;
    Callables<MemoryOperationEvent> third;
    Callables<MemoryOperationEvent> fourth;

    void onNotification1(const MemoryOperationEvent& event) override { first.tell(event); }
    void onNotification2(const MemoryOperationEvent& event) override { second.tell(event); }
    void onNotification3(const MemoryOperationEvent& event) override { third.tell(event); }
    void onNotification4(const MemoryOperationEvent& event) override { fourth.tell(event); }
};

template <>
struct Relay<ISystemTermsControl> final : ObservingRelay<ISystemTermsControl, ISystemTermsControl::Observer>
{
    Callables<> notice;
    Callables<unsigned int> value;
    Callables<> secondNotice;
    Callables<ISystemTermsControl::Status> status;

    void onTermsNotice() override { notice.tell(); }
    void onTermsValue(unsigned int number) override { value.tell(number); }
    void onTermsSecondNotice() override { secondNotice.tell(); }
    void onTermsStatus(ISystemTermsControl::Status told) override { status.tell(told); }
};

/// For the two calibrations.
template <typename Adapter>
struct CalibrationRelay : ObservingRelay<Adapter, typename Adapter::Observer>
{
    Callables<> first;
    Callables<> second;
    Callables<> third;
    Callables<CalibrationState> state;

    void onFirstEvent() override { first.tell(); }
    void onSecondEvent() override { second.tell(); }
    void onThirdEvent() override { third.tell(); }
    void onStateChanged(CalibrationState told) override { state.tell(told); }
};

template <>
struct Relay<SdkYqIfswCalibrationControl> final : CalibrationRelay<SdkYqIfswCalibrationControl>
{
};

template <>
struct Relay<SdkYqFactoryPowerCalibrationControl> final : CalibrationRelay<SdkYqFactoryPowerCalibrationControl>
{
};

template <>
struct Relay<SdkFactoryCorrectionControl> final
    : ObservingRelay<SdkFactoryCorrectionControl, SdkFactoryCorrectionControl::Observer>
{
    Callables<> corrections;
    Callables<> states;
    Callables<FactoryCorrection, bool> enabled;

    void onCorrectionsChanged() override { corrections.tell(); }
    void onCorrectionStatesChanged() override { states.tell(); }
    void onEnabledChanged(FactoryCorrection correction, bool on) override { enabled.tell(correction, on); }
};

/// With the watcher that has the controller's signals.
template <>
struct Relay<SdkCalibrationControlHandle>
{
    Callables<> unitStatus;
    Callables<int> saveProgress;
    Callables<> configuration;
    std::optional<SdkCalibrationControlWatcher> watcher;

    void attach(SdkCalibrationControlHandle& handle)
    {
        using Watcher = SdkCalibrationControlWatcher;
        Watcher* const made = &watcher.emplace(handle);
        QObject::connect(made, &Watcher::unitStatusChanged, [this] { unitStatus.tell(); });
        QObject::connect(made, &Watcher::saveProgressChanged, [this](int percent) { saveProgress.tell(percent); });
        QObject::connect(made, &Watcher::configurationChanged, [this] { configuration.tell(); });
    }
    void detach(SdkCalibrationControlHandle& /*handle*/) { watcher.reset(); }
};

} // namespace tov::python

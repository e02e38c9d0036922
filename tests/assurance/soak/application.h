#pragma once

#include "instrument.h"
#include "service/calibration/sdkcalibrationcontrolhandle.h"
#include "service/calibration/sdkfactorycorrectioncontrol.h"
#include "service/calibration/sdkyqfactorypowercalibrationcontrol.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"
#include "service/memory/ifilememorycontrol.h"
#include "service/memory/imemoryoperationscontrol.h"
#include "service/memory/ipotentiometerscontrol.h"
#include "service/memory/iserialnumbercontrol.h"
#include "service/memory/isystemtermscontrol.h"
#include "service/memory/iusbidcontrol.h"
#include "service/monitoring/sdktemperaturecontrol.h"
#include "service/tuning/sdkkz515powercontrol.h"
#include "service/tuning/sdkkz515synthesiscontrol.h"
#include "service/tuning/sdkloleakagecontrol.h"
#include "service/tuning/sdkulkpowercontrol.h"
#include "service/tuning/sdkulksynthesiscontrol.h"
#include "service/tuning/sdkwn0807powercontrol.h"
#include "service/tuning/sdkwn0807synthesiscontrol.h"
#include "service/tuning/sdkyqsynthesiscontrol.h"

#include <any>
#include <atomic>
#include <cstdint>
#include <vector>

namespace tov::testing {

/// How often applications heard something, and how often their adapters said something of themselves.
inline std::atomic<std::uint64_t> heard = 0;
inline std::atomic<std::uint64_t> saidByAdapters = 0;

/// Observes whatever can be observed, and counts.
class Ear final : public devices::service::ISerialNumberControl::Observer,
                  public devices::service::IMemoryOperationsControl::IObserver,
                  public devices::service::ISystemTermsControl::Observer,
                  public devices::service::SdkFactoryCorrectionControl::Observer
{
public:
    using Event = devices::service::MemoryOperationEvent;

    void onSerialNumberEvent(const devices::service::SerialNumberEvent& /*event*/) override { ++heard; }
    void onNotification1(const Event& /*event*/) override { ++heard; }
    void onNotification2(const Event& /*event*/) override { ++heard; }
    void onNotification3(const Event& /*event*/) override { ++heard; }
    void onNotification4(const Event& /*event*/) override { ++heard; }
    void onTermsNotice() override { ++heard; }
    void onTermsValue(unsigned int /*value*/) override { ++heard; }
    void onTermsSecondNotice() override { ++heard; }
    void onTermsStatus(devices::service::ISystemTermsControl::Status /*status*/) override { ++heard; }
    void onCorrectionsChanged() override { ++heard; }
    void onCorrectionStatesChanged() override { ++heard; }
    void onEnabledChanged(devices::FactoryCorrection /*correction*/, bool /*enabled*/) override { ++heard; }
};

/// The same for a calibration.
template <typename Adapter>
class CalibrationEar final : public Adapter::Observer
{
public:
    void onFirstEvent() override { ++heard; }
    void onSecondEvent() override { ++heard; }
    void onThirdEvent() override { ++heard; }
    void onStateChanged(devices::service::CalibrationState /*state*/) override { ++heard; }
};

/// One operation of each adapter.
inline void use(devices::service::IFileMemoryControl& files)
{
    (void)files.spaceInfo();
}
inline void use(devices::service::IPotentiometersControl& control)
{
    (void)control.readFromEeprom(1);
}
inline void use(devices::service::IUsbIdControl& control)
{
    control.usbIds();
}
inline void use(devices::service::ISerialNumberControl& control)
{
    (void)control.serialNumber();
}
inline void use(devices::service::IMemoryOperationsControl& control)
{
    (void)control.erase();
}
inline void use(devices::service::ISystemTermsControl& control)
{
    control.systemTermsFlag();
}
inline void use(devices::service::SdkUlkSynthesisControl& control)
{
    control.selectedIf();
}
inline void use(devices::service::SdkUlkPowerControl& control)
{
    control.loPower();
}
inline void use(devices::service::SdkWn0807SynthesisControl& control)
{
    control.loPower();
}
inline void use(devices::service::SdkWn0807PowerControl& control)
{
    control.dacMode();
}
inline void use(devices::service::SdkLoLeakageControl& control)
{
    control.setEnabled(true);
}
inline void use(devices::service::SdkKz515PowerControl& control)
{
    control.setDacA(1);
}
inline void use(devices::service::SdkKz515SynthesisControl& control)
{
    control.currentReferenceFrequency();
}
inline void use(devices::service::SdkYqSynthesisControl& control)
{
    control.selectedIf();
}
inline void use(devices::service::SdkYqIfswCalibrationControl& control)
{
    control.frequencyPlan();
}
inline void use(devices::service::SdkYqFactoryPowerCalibrationControl& control)
{
    control.frequencyPlan();
}
inline void use(devices::service::SdkFactoryCorrectionControl& control)
{
    control.supported();
}
inline void use(devices::service::SdkTemperatureControl& control)
{
    control.temperature();
}
inline void use(devices::service::SdkCalibrationControlHandle& control)
{
    control.lock();
}

/// An instrument with an application's adapters of all kinds, each observed if it can be.
///
/// Thread: *any thread*; releases and offers take turns.
class Application
{
public:
    explicit Application(const devices::ControlRegistry& registry);
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    ~Application();

    /// Calls the adapter of the kind `index`.
    void call(std::size_t index);

    /// Has the control of some kind that can be observed tell something.
    void notify(unsigned int which);

    /// Announces a release and does it, or an offer; whatever comes next.
    void change();

    /// Sees to it that the controls are there.
    void settle();

private:
    template <typename Exposed>
    static std::shared_ptr<Exposed> exposed(const devices::Control<Exposed>& kind);

    template <std::size_t index>
    using Exposed = typename decltype(exposed(std::get<index>(devices::controls::kinds)))::element_type;

    template <std::size_t... index>
    static std::tuple<std::shared_ptr<Exposed<index>>...> tupleOf(std::index_sequence<index...>);

    using Adapters = decltype(tupleOf(std::make_index_sequence<kindCount>()));

    void release();
    void offer();

    Instrument m_instrument;
    Adapters m_adapters;
    std::vector<devices::IControlLifecycleObserver*> m_lifecycle;
    Ear m_ear;
    CalibrationEar<devices::service::SdkYqIfswCalibrationControl> m_ifswEar;
    CalibrationEar<devices::service::SdkYqFactoryPowerCalibrationControl> m_powerEar;

    std::mutex m_mutex; // guards all below
    bool m_offered = true;
};

} // namespace tov::testing

#include "conformance/bench/ears.h"

#include "sdk/ifactorycorrectioncontrol.h"
#include "sdk/itemperaturecontrol.h"
#include "sdk/service/calibrations/icalibrationcontroller.h"
#include "sdk/service/imemoryoperationscontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "sdk/service/isystemtermscontrol.h"
#include "sdk/service/iyqfactorypowercalibrationcontrol.h"
#include "sdk/service/iyqifswcalibrationcontrol.h"

#include <deque>
#include <exception>
#include <utility>
#include <vector>

namespace tov::conformance {

namespace controls = devices::controls;
using namespace sdk::service;
using sdk::service::calibrations::ICalibrationController;

namespace {

template <typename SdkIface, typename Observer>
class EarOf : public Ear, public Observer
{
public:
    void addTo(const std::shared_ptr<void>& control) final { static_cast<SdkIface*>(control.get())->addObserver(this); }
    void removeFrom(const std::shared_ptr<void>& control) final
    {
        static_cast<SdkIface*>(control.get())->removeObserver(this);
    }
};

class MemoryOperationsEar final : public EarOf<IMemoryOperationsControl, IMemoryOperationsControl::IObserver>
{
    void onNotification1(unsigned int /*a*/, unsigned int /*b*/) override { hear(); }
    void onNotification2(unsigned int /*a*/, unsigned int /*b*/) override { hear(); }
    void onNotification3(unsigned int /*a*/, unsigned int /*b*/) override { hear(); }
    void onNotification4(unsigned int /*a*/, unsigned int /*b*/) override { hear(); }
};

class SerialNumberEar final : public EarOf<IMemorySerialNumberControl, IMemorySerialNumberControl::Observer>
{
    void onSerialNumberEvent(unsigned int /*a*/, unsigned int /*b*/) override { hear(); }
};

class SystemTermsEar final : public EarOf<ISystemTermsControl, ISystemTermsControl::Observer>
{
    void onTermsNotice() override { hear(); }
    void onTermsValue(unsigned int /*value*/) override { hear(); }
    void onTermsSecondNotice() override { hear(); }
    void onTermsStatus(int /*status*/) override { hear(); }
};

template <typename SdkIface>
class CalibrationEar final : public EarOf<SdkIface, typename SdkIface::Observer>
{
    void onFirstEvent() override { this->hear(); }
    void onSecondEvent() override { this->hear(); }
    void onThirdEvent() override { this->hear(); }
    void onStateChanged(int /*state*/) override { this->hear(); }
};

class FactoryCorrectionsEar final
    : public EarOf<sdk::IFactoryCorrectionControl, sdk::IFactoryCorrectionControl::IObserver>
{
    void onCorrectionsChanged() override { hear(); }
    void onCorrectionStatesChanged() override { hear(); }
    void onEnabledChanged(sdk::CorrectionFlag /*flag*/, bool /*enabled*/) override { hear(); }
};

class TemperatureEar final : public EarOf<sdk::ITemperatureControl, sdk::ITemperatureControl::Observer>
{
    void onTemperatureChanged() override { hear(); }
};

class CalibrationControllerEar final : public EarOf<ICalibrationController, ICalibrationController::Observer>
{
    void onUnitStatusChanged() override { hear(); }
    void onSaveProgress(int /*save*/, const ICalibrationController::SaveProgress& /*progress*/) override { hear(); }
    void onConfigurationChanged() override { hear(); }
};

struct Makes
{
    devices::ControlName control;
    std::unique_ptr<Ear> (*make)();
};

template <typename Kind>
Makes makes(const devices::ControlName& control)
{
    return {control, []() -> std::unique_ptr<Ear> { return std::make_unique<Kind>(); }};
}

const Makes* find(const devices::ControlName& control)
{
    static const std::vector<Makes> all{
        makes<SerialNumberEar>(controls::serialNumber),
        makes<MemoryOperationsEar>(controls::memoryOperations),
        makes<SystemTermsEar>(controls::systemTerms),
        makes<CalibrationEar<IYqIfswCalibrationControl>>(controls::ifswCalibration),
        makes<CalibrationEar<IYqFactoryPowerCalibrationControl>>(controls::factoryPowerCalibration),
        makes<FactoryCorrectionsEar>(controls::factoryCorrections),
        makes<TemperatureEar>(controls::temperature),
        makes<CalibrationControllerEar>(controls::calibrationController1),
        makes<CalibrationControllerEar>(controls::calibrationController2),
    };
    for (const Makes& each : all)
        if (each.control == control)
            return &each;
    return nullptr;
}

} // namespace

Ear& makeEar(const devices::ControlName& control)
{
    static auto& kept = *std::make_unique<std::deque<std::unique_ptr<Ear>>>().release();
    return *kept.emplace_back(find(control)->make());
}

Registered::Registered(Ear& ear, std::shared_ptr<void> control)
    : m_ear(ear)
    , m_control(std::move(control))
{
    m_ear.addTo(m_control);
}

Registered::~Registered()
try {
    m_ear.poison();
    if (std::uncaught_exceptions() == m_exceptions) // a finding is not to wait for what may hang
        m_ear.removeFrom(m_control);
} catch (const std::exception&) {
    return; // whether it throws is looked at elsewhere
}

void expectTold(const Bench& bench, const Ear& ear, const devices::ControlName& control, int before)
{
    if (!bench.waitUntil([&] { return ear.told() > before; }))
        throw NotApplicable("told nobody", named(control));
}

bool isObservable(const devices::ControlName& control)
{
    return find(control) != nullptr;
}

bool isCalibration(const devices::ControlName& control)
{
    return control == controls::ifswCalibration || control == controls::factoryPowerCalibration;
}

bool isCalibrationController(const devices::ControlName& control)
{
    return control == controls::calibrationController1 || control == controls::calibrationController2;
}

Seen forEachObservable(Bench& bench, const WhichControls& which,
                       const std::function<void(const devices::ControlName&, std::shared_ptr<void>)>& work)
{
    Tally tally;
    for (const devices::ControlName& control : bench.offered())
        if (which(control))
            tally.attempt({}, [&] {
                bench.begin("observers of " + named(control));
                work(control, bench.held(control)); // whose owner it is then
                tally.looked(named(control));
            });
    return tally.seen();
}

} // namespace tov::conformance

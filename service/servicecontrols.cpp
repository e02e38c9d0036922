#include "service/servicecontrols.h"

#include "devices/controlkeys.h"
#include "devices/controlregistry.h"
#include "devices/makecreatefunction.h"
#include "sdk/ivna.h"
#include "service/calibration/sdkcalibrationcontrolhandle.h"
#include "service/calibration/sdkfactorycorrectioncontrol.h"
#include "service/calibration/sdkyqfactorypowercalibrationcontrol.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"
#include "service/memory/sdkfilememorycontrol.h"
#include "service/memory/sdkmemoryoperationscontrol.h"
#include "service/memory/sdkmemoryusbid.h"
#include "service/memory/sdkpotentiometerscontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"
#include "service/memory/sdksystemtermscontrol.h"
#include "service/monitoring/sdktemperaturecontrol.h"
#include "service/tuning/sdkkz515powercontrol.h"
#include "service/tuning/sdkkz515synthesiscontrol.h"
#include "service/tuning/sdkloleakagecontrol.h"
#include "service/tuning/sdkulkpowercontrol.h"
#include "service/tuning/sdkulksynthesiscontrol.h"
#include "service/tuning/sdkwn0807powercontrol.h"
#include "service/tuning/sdkwn0807synthesiscontrol.h"
#include "service/tuning/sdkyqsynthesiscontrol.h"

namespace tov::devices::service::servicecontrols {

namespace {

template <typename SdkIface, typename Exposed, typename Impl = Exposed>
void add(ControlRegistry& registry, const ControlKeys& keys)
{
    registry.addEntry(ControlRegistry::ControlEntry<sdk::IVna>{
        keys.registry, makeCreateFunction<sdk::IVna, SdkIface, Exposed, Impl>(keys.sdk)});
}

} // namespace

void registrate(ControlRegistry* registry)
{
    add<sdk::service::IFileMemoryControl, IFileMemoryControl, SdkFileMemoryControl>(*registry, controlkeys::fileMemory);
    add<sdk::service::IPotentiometersControl, IPotentiometersControl, SdkPotentiometersControl>(
        *registry, controlkeys::potentiometers);
    add<sdk::service::IMemoryUsbIdControl, IUsbIdControl, SdkMemoryUsbId>(*registry, controlkeys::usbId);
    add<sdk::service::IMemorySerialNumberControl, ISerialNumberControl, SdkSerialNumberControl>(
        *registry, controlkeys::serialNumber);
    add<sdk::service::IMemoryOperationsControl, IMemoryOperationsControl, SdkMemoryOperationsControl>(
        *registry, controlkeys::memoryOperations);
    add<sdk::service::IUlkSynthesisControl, SdkUlkSynthesisControl>(*registry, controlkeys::ulkSynthesis);
    add<sdk::service::IUlkPowerControl, SdkUlkPowerControl>(*registry, controlkeys::ulkPower);
    add<sdk::service::IWn0807SynthesisControl, SdkWn0807SynthesisControl>(*registry, controlkeys::wn0807Synthesis);
    add<sdk::service::IWn0807PowerModuleControl, SdkWn0807PowerControl>(*registry, controlkeys::wn0807Power);
    add<sdk::service::ILoLeakageControl, SdkLoLeakageControl>(*registry, controlkeys::loLeakage);
    add<sdk::service::IKZ515PowerControl, SdkKz515PowerControl>(*registry, controlkeys::kz515Power);
    add<sdk::service::IKZ515SynthesisControl, SdkKz515SynthesisControl>(*registry, controlkeys::kz515Synthesis);
    add<sdk::service::IYqSynthesisControl, SdkYqSynthesisControl>(*registry, controlkeys::yqSynthesis);
    add<sdk::service::ISystemTermsControl, ISystemTermsControl, SdkSystemTermsControl>(*registry,
                                                                                       controlkeys::systemTerms);
    add<sdk::service::IYqIfswCalibrationControl, SdkYqIfswCalibrationControl>(*registry, controlkeys::ifswCalibration);
    add<sdk::service::IYqFactoryPowerCalibrationControl, SdkYqFactoryPowerCalibrationControl>(
        *registry, controlkeys::factoryPowerCalibration);
    add<sdk::IFactoryCorrectionControl, SdkFactoryCorrectionControl>(*registry, controlkeys::factoryCorrections);
    add<sdk::ITemperatureControl, SdkTemperatureControl>(*registry, controlkeys::temperature);
    add<sdk::service::calibrations::ICalibrationController, SdkCalibrationControlHandle>(
        *registry, controlkeys::calibrationController1);
    add<sdk::service::calibrations::ICalibrationController, SdkCalibrationControlHandle>(
        *registry, controlkeys::calibrationController2);
}

} // namespace tov::devices::service::servicecontrols

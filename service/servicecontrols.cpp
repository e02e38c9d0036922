#include "service/servicecontrols.h"

#include "devices/controlkeys.h"
#include "devices/controlregistry.h"
#include "devices/makecreatefunction.h"
#include "sdk/ivna.h"
#include "service/memory/sdkfilememorycontrol.h"
#include "service/memory/sdkmemoryoperationscontrol.h"
#include "service/memory/sdkmemoryusbid.h"
#include "service/memory/sdkpotentiometerscontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"
#include "service/memory/sdksystemtermscontrol.h"
#include "service/tuning/sdkloleakagecontrol.h"
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
    add<sdk::service::ILoLeakageControl, SdkLoLeakageControl>(*registry, controlkeys::loLeakage);
    add<sdk::service::IYqSynthesisControl, SdkYqSynthesisControl>(*registry, controlkeys::yqSynthesis);
    add<sdk::service::ISystemTermsControl, ISystemTermsControl, SdkSystemTermsControl>(*registry,
                                                                                       controlkeys::systemTerms);
}

} // namespace tov::devices::service::servicecontrols

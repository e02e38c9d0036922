#include "service/servicecontrols.h"

#include "devices/controlkeys.h"
#include "devices/controlregistry.h"
#include "devices/makecreatefunction.h"
#include "sdk/ivna.h"
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
    add<sdk::service::ILoLeakageControl, SdkLoLeakageControl>(*registry, controlkeys::loLeakage);
    add<sdk::service::IYqSynthesisControl, SdkYqSynthesisControl>(*registry, controlkeys::yqSynthesis);
}

} // namespace tov::devices::service::servicecontrols

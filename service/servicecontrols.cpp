#include "service/servicecontrols.h"

#include "devices/controlregistry.h"
#include "devices/controls.h"
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

template <typename SdkIface, typename Exposed, typename Adapter>
void add(ControlRegistry& registry, const ControlKind<SdkIface, Exposed, Adapter>& kind)
{
    registry.addEntry(ControlRegistry::ControlEntry<sdk::IVna>{
        kind.keys.registry, makeCreateFunction<sdk::IVna, SdkIface, Exposed, Adapter>(kind.keys.sdk)});
}

} // namespace

void registrate(ControlRegistry* registry)
{
    std::apply([registry](const auto&... kind) { (add(*registry, kind), ...); }, controls::kinds);
}

} // namespace tov::devices::service::servicecontrols

#include "fakes/fakeloleakagecontrol.h"
#include "operations/operations.h"
#include "operations/row.h"
#include "service/tuning/sdkloleakagecontrol.h"

namespace tov::testing {

using devices::service::SdkLoLeakageControl;
using sdk::service::ILoLeakageControl;

Operations loLeakageOperations()
{
    return operations<SdkLoLeakageControl, ILoLeakageControl, FakeLoLeakageControl>({
        reads("isEnabled", &SdkLoLeakageControl::isEnabled, {false}, {true}),
        writes("setEnabled", &SdkLoLeakageControl::setEnabled, true),
    });
}

} // namespace tov::testing

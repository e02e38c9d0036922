#include "operations/operations.h"
#include "operations/valuerows.h"
#include "service/tuning/sdkloleakagecontrol.h"
#include "testing/fakeloleakagecontrol.h"

namespace tov::testing {

using devices::service::SdkLoLeakageControl;
using sdk::service::ILoLeakageControl;

Rows<SdkLoLeakageControl> loLeakageRows()
{
    return {
        reads("isEnabled", &SdkLoLeakageControl::isEnabled, {false}, {true}),
        writes("setEnabled", &SdkLoLeakageControl::setEnabled, true),
    };
}

Operations loLeakageOperations()
{
    return operations<SdkLoLeakageControl, ILoLeakageControl, FakeLoLeakageControl>(loLeakageRows());
}

} // namespace tov::testing

#include "fakes/fakeloleakagecontrol.h"
#include "service/tuning/sdkloleakagecontrol.h"
#include "service/valueadaptercontract.h"

namespace tov::testing {

using devices::service::SdkLoLeakageControl;

INSTANTIATE_TEST_SUITE_P(SdkLoLeakageControl, ValueAdapter,
                         (operations<SdkLoLeakageControl, sdk::service::ILoLeakageControl, FakeLoLeakageControl>({
                             reads("isEnabled", &SdkLoLeakageControl::isEnabled, {false}, {true}),
                             writes("setEnabled", &SdkLoLeakageControl::setEnabled, true),
                         })),
                         operationName);

} // namespace tov::testing

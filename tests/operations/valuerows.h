#pragma once

#include "operations/row.h"
#include "service/tuning/sdkkz515powercontrol.h"
#include "service/tuning/sdkkz515synthesiscontrol.h"
#include "service/tuning/sdkloleakagecontrol.h"
#include "service/tuning/sdkulkpowercontrol.h"
#include "service/tuning/sdkulksynthesiscontrol.h"
#include "service/tuning/sdkwn0807powercontrol.h"
#include "service/tuning/sdkwn0807synthesiscontrol.h"
#include "service/tuning/sdkyqsynthesiscontrol.h"

namespace tov::testing {

// The rows of the adapters that read and set values.
Rows<devices::service::SdkUlkSynthesisControl> ulkSynthesisRows();
Rows<devices::service::SdkUlkPowerControl> ulkPowerRows();
Rows<devices::service::SdkWn0807PowerControl> wn0807PowerRows();
Rows<devices::service::SdkWn0807SynthesisControl> wn0807SynthesisRows();
Rows<devices::service::SdkLoLeakageControl> loLeakageRows();
Rows<devices::service::SdkKz515PowerControl> kz515PowerRows();
Rows<devices::service::SdkKz515SynthesisControl> kz515SynthesisRows();
Rows<devices::service::SdkYqSynthesisControl> yqSynthesisRows();

} // namespace tov::testing

#pragma once

#include "devices/controls.h"
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

namespace tov::host {

using devices::Control;
using devices::ControlName;

/// Every kind of control, with complete types.
namespace controls = devices::controls;

} // namespace tov::host

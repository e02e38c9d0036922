#pragma once

#include "devices/devices_export.h"
#include "sdk/model.h"

#include <QString>

namespace tov::devices {

/// The name under which the application shows `model`; one that it does not know is named by its number.
///
/// Thread: *any thread*.
DEVICES_EXPORT QString prettyModelName(sdk::Model model);

} // namespace tov::devices

#pragma once

#include "devices/cxx23.h"
#include "service/devicesservice_export.h"

namespace tov::devices {
class ControlRegistry;
}

namespace tov::devices::service::servicecontrols {

/// Enters every control of this library into `registry`, which must not be null. Creates nothing and
/// keeps nothing.
///
/// What `ControlRegistry::addEntry()` throws, as on a second registration, passes through; entries
/// added before that stay.
///
/// Thread: *owner's thread* of the registry.
DEVICESSERVICE_EXPORT void registrate(ControlRegistry* registry);

} // namespace tov::devices::service::servicecontrols

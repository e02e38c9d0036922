#pragma once

#include "devices/devices_export.h"
#include "sdk/correctionflag.h"

#include <cstdint>
#include <optional>

namespace tov::devices {

/// The factory corrections that the application knows. Instruments have some that it does not know.
enum class FactoryCorrection : std::uint8_t {
    Correction1,
    Correction2,
    Correction3,
    Correction4,
    Correction5,
    Correction6,
    Correction7,
    Correction8,
    Correction9,
    Correction10,
};

/// The flag of `correction`; no flag at all for a value that is none of the above.
///
/// Thread: *any thread*.
DEVICES_EXPORT sdk::CorrectionFlag toSdkCorrection(FactoryCorrection correction);

/// The correction of `flag`, or nothing when the application does not know it.
///
/// Thread: *any thread*.
DEVICES_EXPORT std::optional<FactoryCorrection> fromSdkCorrection(sdk::CorrectionFlag flag);

} // namespace tov::devices

#pragma once

#include "devices/devices_export.h"
#include "sdk/correctionflag.h"

#include <cstdint>
#include <optional>

namespace tov::devices {

/// The factory corrections that the application knows, by the SDK's flags. Instruments have some that it does not know.
enum class FactoryCorrection : std::uint8_t {
    Correction1,  ///< the SDK's 0x0001
    Correction2,  ///< the SDK's 0x0002
    Correction3,  ///< the SDK's 0x0004
    Correction4,  ///< the SDK's 0x0008
    Correction5,  ///< the SDK's 0x0020
    Correction6,  ///< the SDK's 0x0040
    Correction7,  ///< the SDK's 0x0100
    Correction8,  ///< the SDK's 0x0200
    Correction9,  ///< the SDK's 0x1000
    Correction10, ///< the SDK's 0x8000
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

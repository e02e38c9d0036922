#pragma once

#include "devices/cxx23.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <string>
#include <vector>

namespace tov::devices::service {

/// A potentiometer as the instrument describes it; what the two words mean is the instrument's.
struct PotentiometerInfo
{
    std::string name;       ///< the instrument's name for it
    std::int32_t word1 = 0; ///< the instrument's first word
    std::int32_t word2 = 0; ///< the instrument's second word
};

/// The instrument's digital potentiometers, each with a value in RAM and one in EEPROM; writing one does
/// not touch the other.
///
/// The operations on values block until the instrument has answered, without a time limit. Indices in
/// `potentiometers()` and values in the instrument's unit go to it unchecked. Whatever failure it answers, and
/// an absent control, is `Failed`; what it throws passes through.
///
/// Thread: *any thread*, but the operations on values not on the *SDK's notification thread*.
class IPotentiometersControl
{
public:
    /// How an operation on values fails.
    enum class Error : std::uint32_t {
        Failed = 0 ///< the control is absent, or the instrument answered with an error
    };

    virtual ~IPotentiometersControl() = default;

    /// The potentiometers in the instrument's order; empty when the control is absent.
    virtual std::vector<PotentiometerInfo> potentiometers() const = 0;

    /// The value in EEPROM.
    virtual std::expected<int, Error> readFromEeprom(std::size_t index) = 0;

    /// Sets the value in RAM; it is not read back.
    virtual std::expected<void, Error> writeToRam(std::size_t index, int value) = 0;

    /// Sets the value in EEPROM; it is not read back.
    virtual std::expected<void, Error> writeToEeprom(std::size_t index, int value) = 0;
};

} // namespace tov::devices::service

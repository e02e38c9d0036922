#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <string>
#include <vector>

namespace tov::devices::service {

/// A potentiometer as the instrument describes it.
struct PotentiometerInfo
{
    std::string name;
    std::int32_t word1 = 0; // as the instrument gives it
    std::int32_t word2 = 0; // as the instrument gives it
};

/// The instrument's digital potentiometers, each with a value in RAM and one in EEPROM; writing one does
/// not touch the other.
///
/// The operations on values block until the instrument has answered, without a time limit. Indices and
/// values go to the instrument unchecked. Whatever goes wrong, an absent control included, is `Failed`.
///
/// Thread: *any thread*, but the operations on values not on the *SDK's notification thread*.
class IPotentiometersControl
{
public:
    enum class Error : std::uint32_t { Failed = 0 };

    virtual ~IPotentiometersControl() = default;

    /// The potentiometers in the instrument's order; empty when the control is absent.
    virtual std::vector<PotentiometerInfo> potentiometers() const = 0;

    virtual std::expected<int, Error> readFromEeprom(std::size_t index) = 0;
    virtual std::expected<void, Error> writeToRam(std::size_t index, int value) = 0;
    virtual std::expected<void, Error> writeToEeprom(std::size_t index, int value) = 0;
};

} // namespace tov::devices::service

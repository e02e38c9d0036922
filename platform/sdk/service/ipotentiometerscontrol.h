#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <system_error>
#include <vector>

namespace sdk::service {

/// The instrument's digital potentiometers, each with a value in RAM and one in EEPROM. The operations on
/// values answer through their callback, exactly once, on any thread, before or after they return.
///
/// Thread: *any thread*.
class IPotentiometersControl
{
public:
    struct PotentiometerInfo
    {
        std::string name;
        std::int32_t word1 = 0;
        std::int32_t word2 = 0;
    };

    virtual ~IPotentiometersControl() = default;

    virtual void reserved1() {}

    virtual std::vector<PotentiometerInfo> potentiometers() = 0;
    virtual void readFromEeprom(std::size_t index, std::function<void(int, std::error_code)> answer) = 0;
    virtual void writeToRam(std::size_t index, int value, std::function<void(std::error_code)> answer) = 0;
    virtual void writeToEeprom(std::size_t index, int value, std::function<void(std::error_code)> answer) = 0;
};

} // namespace sdk::service

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
/// An error code of the number 0 is a success, whatever its category; any other one is a failure, and what comes with
/// it is not looked at. Indices and values come unchecked. What an operation throws instead of answering reaches the
/// application.
///
/// Thread: *any thread*.
class IPotentiometersControl
{
public:
    /// A potentiometer. The library passes everything on without knowing what the two words mean.
    struct PotentiometerInfo
    {
        std::string name;       ///< the potentiometer's name
        std::int32_t word1 = 0; ///< first word
        std::int32_t word2 = 0; ///< second word
    };

    virtual ~IPotentiometersControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// The potentiometers, in the order of their indices.
    virtual std::vector<PotentiometerInfo> potentiometers() = 0;

    /// Answers with the value in EEPROM.
    virtual void readFromEeprom(std::size_t index, std::function<void(int, std::error_code)> answer) = 0;

    /// Sets the value in RAM and leaves the one in EEPROM.
    virtual void writeToRam(std::size_t index, int value, std::function<void(std::error_code)> answer) = 0;

    /// Sets the value in EEPROM and leaves the one in RAM.
    virtual void writeToEeprom(std::size_t index, int value, std::function<void(std::error_code)> answer) = 0;
};

} // namespace sdk::service

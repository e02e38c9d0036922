#pragma once

#include "sdk/model.h"

#include <cstdint>
#include <functional>
#include <system_error>
#include <vector>

namespace sdk::service {

/// The USB identifier in the instrument's memory. Writing answers through its callback, exactly once, on
/// any thread, before or after it returns.
///
/// An error code of the number 0 is a success, whatever its category; any other one is a failure. What an operation
/// throws reaches the application; writing throws instead of answering.
///
/// Thread: *any thread*.
class IMemoryUsbIdControl
{
public:
    /// An identifier with what belongs to it. The library passes on everything but the model without knowing what it
    /// means.
    struct UsbId
    {
        std::uint16_t id1 = 0;        ///< first word
        std::uint16_t id2 = 0;        ///< second word
        std::uint16_t id3 = 0;        ///< third word
        Model model = Model::Unknown; ///< model of the instrument; the application gets its name
        std::int32_t tag = 0;         ///< passed on unchanged
        std::uint64_t data1 = 0;      ///< passed on bit for bit
        std::uint64_t data2 = 0;      ///< passed on bit for bit
    };

    /// What is written: the words of the identifier alone.
    struct UsbIdWords
    {
        std::uint16_t id1 = 0; ///< first word
        std::uint16_t id2 = 0; ///< second word
        std::uint16_t id3 = 0; ///< third word
    };

    virtual ~IMemoryUsbIdControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// The identifier of this instrument.
    virtual UsbId usbId() = 0;

    /// The identifiers that the instrument offers, in an order that the library keeps.
    virtual std::vector<UsbId> usbIds() = 0;

    /// Writes `words`, which live only until this returns, even if the answer comes later.
    virtual void writeUsbId(const UsbIdWords& words, std::function<void(std::error_code)> answer) = 0;
};

} // namespace sdk::service

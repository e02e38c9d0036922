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
/// Thread: *any thread*.
class IMemoryUsbIdControl
{
public:
    struct UsbId
    {
        std::uint16_t id1 = 0;
        std::uint16_t id2 = 0;
        std::uint16_t id3 = 0;
        Model model = Model::Unknown;
        std::int32_t tag = 0;
        std::uint64_t data1 = 0;
        std::uint64_t data2 = 0;
    };

    /// What is written: the words of the identifier alone.
    struct UsbIdWords
    {
        std::uint16_t id1 = 0;
        std::uint16_t id2 = 0;
        std::uint16_t id3 = 0;
    };

    virtual ~IMemoryUsbIdControl() = default;

    virtual void reserved1() {}

    virtual UsbId usbId() = 0;
    virtual std::vector<UsbId> usbIds() = 0;
    virtual void writeUsbId(const UsbIdWords& words, std::function<void(std::error_code)> answer) = 0;
};

} // namespace sdk::service

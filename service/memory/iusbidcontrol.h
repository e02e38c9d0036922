#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tov::devices::service {

/// The USB identifier in the instrument's memory. What the instrument throws passes through every operation.
///
/// Thread: *any thread*, but writing not on the *SDK's notification thread*.
class IUsbIdControl
{
public:
    /// The three words of an identifier and what the instrument gives with them.
    struct UsbId
    {
        std::uint16_t id1 = 0;   ///< first word
        std::uint16_t id2 = 0;   ///< second word
        std::uint16_t id3 = 0;   ///< third word
        std::string modelName;   ///< name of the instrument's model, UTF-8, as the application shows it
        std::int32_t tag = 1;    ///< as the instrument gives it
        std::uint64_t data1 = 0; ///< as the instrument gives it, bit for bit
        std::uint64_t data2 = 0; ///< as the instrument gives it, bit for bit
    };

    virtual ~IUsbIdControl() = default;

    /// The identifier of this instrument; all zero and nameless with the tag 1 when the control is absent.
    virtual UsbId usbId() = 0;

    /// The identifiers that the instrument offers, in its order; empty when the control is absent.
    virtual std::vector<UsbId> usbIds() = 0;

    /// Writes the three words of `id` and nothing else of it. Blocks until the instrument has answered,
    /// without a time limit; false when it failed or the control is absent.
    virtual bool writeUsbId(const UsbId& id) = 0;
};

} // namespace tov::devices::service

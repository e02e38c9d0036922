#pragma once

#include "sdk/service/imemoryusbidcontrol.h"
#include "testing/answeringcontrol.h"

namespace tov::testing {

/// A fake of `sdk::service::IMemoryUsbIdControl`.
class FakeMemoryUsbIdControl final : public sdk::service::IMemoryUsbIdControl, public AnsweringControl
{
public:
    UsbId usbId() override { return called<UsbId>("usbId"); }
    std::vector<UsbId> usbIds() override { return called<std::vector<UsbId>>("usbIds"); }
    void writeUsbId(const UsbIdWords& words, std::function<void(std::error_code)> answer) override
    {
        answers("writeUsbId", std::move(answer), words.id1, words.id2, words.id3);
    }
};

} // namespace tov::testing

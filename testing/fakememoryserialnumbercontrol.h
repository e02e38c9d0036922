#pragma once

#include "sdk/service/imemoryserialnumbercontrol.h"
#include "testing/answeringcontrol.h"
#include "testing/observedfake.h"

namespace tov::testing {

/// A fake of `sdk::service::IMemorySerialNumberControl`.
class FakeMemorySerialNumberControl final
    : public ObservedFake<sdk::service::IMemorySerialNumberControl, sdk::service::IMemorySerialNumberControl::Observer,
                          AnsweringControl>
{
public:
    FakeMemorySerialNumberControl() { recordsObservers = false; }

    void readSerialNumber(std::function<void(unsigned int, std::error_code)> answer) override
    {
        answers("readSerialNumber", std::move(answer));
    }
    void writeSerialNumber(unsigned int serialNumber, std::function<void(std::error_code)> answer) override
    {
        answers("writeSerialNumber", std::move(answer), serialNumber);
    }
};

} // namespace tov::testing

#pragma once

#include "sdk/service/imemoryoperationscontrol.h"
#include "testing/answeringcontrol.h"
#include "testing/observedfake.h"

namespace tov::testing {

/// A fake of `sdk::service::IMemoryOperationsControl`.
class FakeMemoryOperationsControl final
    : public ObservedFake<sdk::service::IMemoryOperationsControl, sdk::service::IMemoryOperationsControl::IObserver,
                          AnsweringControl>
{
public:
    FakeMemoryOperationsControl() { recordsObservers = false; }

    void read(std::function<void(std::vector<std::byte>, std::error_code)> answer) override
    {
        answers("read", std::move(answer));
    }
    void write(std::vector<std::byte> data, std::function<void(std::error_code)> answer) override
    {
        answers("write", std::move(answer), data);
    }
    void erase(std::function<void(std::error_code)> answer) override { answers("erase", std::move(answer)); }
    void integrityCheck(std::function<void(std::error_code)> answer) override
    {
        answers("integrityCheck", std::move(answer));
    }
};

} // namespace tov::testing

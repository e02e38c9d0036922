#pragma once

#include "sdk/service/imemoryoperationscontrol.h"
#include "testing/answeringcontrol.h"
#include "testing/observedcontrol.h"

namespace tov::testing {

/// A fake of `sdk::service::IMemoryOperationsControl`.
class FakeMemoryOperationsControl final : public sdk::service::IMemoryOperationsControl,
                                          public AnsweringControl,
                                          public ObservedControl<sdk::service::IMemoryOperationsControl::IObserver>
{
public:
    /// Also when an observer comes or goes.
    bool recordsObservers = false;

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
    void addObserver(IObserver* observer) override
    {
        if (recordsObservers)
            called("addObserver");
        add(observer);
    }
    void removeObserver(IObserver* observer) override
    {
        if (recordsObservers)
            called("removeObserver");
        remove(observer);
    }
};

} // namespace tov::testing

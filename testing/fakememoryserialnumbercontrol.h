#pragma once

#include "sdk/service/imemoryserialnumbercontrol.h"
#include "testing/answeringcontrol.h"
#include "testing/observedcontrol.h"

namespace tov::testing {

/// A fake of `sdk::service::IMemorySerialNumberControl`.
class FakeMemorySerialNumberControl final : public sdk::service::IMemorySerialNumberControl,
                                            public AnsweringControl,
                                            public ObservedControl<sdk::service::IMemorySerialNumberControl::Observer>
{
public:
    /// Also when an observer comes or goes.
    bool recordsObservers = false;

    void readSerialNumber(std::function<void(unsigned int, std::error_code)> answer) override
    {
        answers("readSerialNumber", std::move(answer));
    }
    void writeSerialNumber(unsigned int serialNumber, std::function<void(std::error_code)> answer) override
    {
        answers("writeSerialNumber", std::move(answer), serialNumber);
    }
    void addObserver(Observer* observer) override
    {
        if (recordsObservers)
            called("addObserver");
        add(observer);
    }
    void removeObserver(Observer* observer) override
    {
        if (recordsObservers)
            called("removeObserver");
        remove(observer);
    }
};

} // namespace tov::testing

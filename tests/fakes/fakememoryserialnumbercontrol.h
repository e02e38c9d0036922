#pragma once

#include "fakes/answeringcontrol.h"
#include "fakes/observedcontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"

namespace tov::testing {

class FakeMemorySerialNumberControl final : public sdk::service::IMemorySerialNumberControl,
                                            public AnsweringControl,
                                            public ObservedControl<sdk::service::IMemorySerialNumberControl::Observer>
{
public:
    void readSerialNumber(std::function<void(unsigned int, std::error_code)> answer) override
    {
        answers("readSerialNumber", std::move(answer));
    }
    void writeSerialNumber(unsigned int serialNumber, std::function<void(std::error_code)> answer) override
    {
        answers("writeSerialNumber", std::move(answer), serialNumber);
    }
    void addObserver(Observer* observer) override { add(observer); }
    void removeObserver(Observer* observer) override { remove(observer); }
};

} // namespace tov::testing

#pragma once

#include "sdk/service/ipotentiometerscontrol.h"
#include "testing/answeringcontrol.h"

namespace tov::testing {

/// A fake of `sdk::service::IPotentiometersControl`.
class FakePotentiometersControl final : public sdk::service::IPotentiometersControl, public AnsweringControl
{
public:
    std::vector<PotentiometerInfo> potentiometers() override
    {
        return called<std::vector<PotentiometerInfo>>("potentiometers");
    }
    void readFromEeprom(std::size_t index, std::function<void(int, std::error_code)> answer) override
    {
        answers("readFromEeprom", std::move(answer), index);
    }
    void writeToRam(std::size_t index, int value, std::function<void(std::error_code)> answer) override
    {
        answers("writeToRam", std::move(answer), index, value);
    }
    void writeToEeprom(std::size_t index, int value, std::function<void(std::error_code)> answer) override
    {
        answers("writeToEeprom", std::move(answer), index, value);
    }
};

} // namespace tov::testing

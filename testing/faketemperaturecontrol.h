#pragma once

#include "sdk/itemperaturecontrol.h"
#include "testing/observedfake.h"

#include <string>
#include <unordered_map>

namespace tov::testing {

/// A fake of `sdk::ITemperatureControl`.
class FakeTemperatureControl : public ObservedFake<sdk::ITemperatureControl, sdk::ITemperatureControl::Observer>
{
public:
    /// What the modules' temperatures are.
    std::unordered_map<std::string, float> modules;

    float temperature() override { return called<float>("temperature"); }
    const std::unordered_map<std::string, float>& modulesTemperature() override
    {
        called("modulesTemperature");
        return modules;
    }
};

} // namespace tov::testing

#pragma once

#include "sdk/itemperaturecontrol.h"
#include "testing/observedcontrol.h"
#include "testing/recordingcontrol.h"

#include <string>
#include <unordered_map>

namespace tov::testing {

/// A fake of `sdk::ITemperatureControl`.
class FakeTemperatureControl : public sdk::ITemperatureControl,
                               public RecordingControl,
                               public ObservedControl<sdk::ITemperatureControl::Observer>
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
    void addObserver(Observer* observer) override
    {
        called("addObserver");
        add(observer);
    }
    void removeObserver(Observer* observer) override
    {
        called("removeObserver");
        remove(observer);
    }
};

} // namespace tov::testing

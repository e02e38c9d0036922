// Temperatures are read while others refresh them. Nobody is connected to the signal.

#include "patience.h"
#include "service/monitoring/sdktemperaturecontrol.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

namespace tov::testing {

namespace {

using devices::service::SdkTemperatureControl;

/// Every module has the temperature of the instrument, so a torn reading shows. Each refresh is one degree warmer.
class EvenControl final : public sdk::ITemperatureControl
{
public:
    EvenControl()
    {
        for (int i = 0; i < 8; ++i)
            m_modules["module " + std::to_string(i)] = 0.0F;
    }

    float temperature() override { return m_temperature; }
    const std::unordered_map<std::string, float>& modulesTemperature() override { return m_modules; }
    void addObserver(Observer* added) override { observer = added; }
    void removeObserver(Observer* /*removed*/) override { observer = nullptr; }

    // In one thread.
    void warm()
    {
        ++m_temperature;
        for (auto& [name, temperature] : m_modules)
            temperature = m_temperature;
        observer->onTemperatureChanged();
    }

    Observer* observer = nullptr;

private:
    float m_temperature = 0.0F;
    std::unordered_map<std::string, float> m_modules;
};

} // namespace

TEST(TemperaturesUnderThreads, AreReadWholeAndNeverGoBack)
{
    const auto control = std::make_shared<EvenControl>();
    const SdkTemperatureControl temperatures(devices::ReacquiringControl<sdk::ITemperatureControl>(
        [control] { return sdk::ControlHandle<sdk::ITemperatureControl>(control); }));

    constexpr int readingsEach = 10;
    std::atomic<bool> stop = false;
    std::atomic<int> content = 0; // readers that have seen enough
    std::vector<std::jthread> readers;
    for (int i = 0; i < 2; ++i)
        readers.emplace_back([&] {
            double before = 0.0;
            for (int seen = 0; !stop;) {
                const auto modules = temperatures.modulesTemperature();
                ASSERT_EQ(modules.size(), 8U);
                for (const auto& module : modules)
                    ASSERT_EQ(module.temperature, modules.front().temperature);
                ASSERT_GE(modules.front().temperature, before);
                if (modules.front().temperature > before && ++seen == readingsEach)
                    ++content;
                before = modules.front().temperature;
                ASSERT_GE(temperatures.temperature(), before);
            }
        });

    const Patience patience("both readers have seen their readings");
    int warmed = 0;
    for (; warmed < 2000 || (content < 2 && patience.lasts()); ++warmed)
        control->warm();
    stop = true;
    readers.clear();
    EXPECT_EQ(temperatures.temperature(), warmed);
}

} // namespace tov::testing

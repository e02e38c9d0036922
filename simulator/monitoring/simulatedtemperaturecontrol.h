#pragma once

#include "sdk/itemperaturecontrol.h"
#include "simulator/support/controlstate.h"
#include "simulator/support/observers.h"
#include "simulator/support/perthread.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tov::simulator {

/// The temperatures of the simulated instrument, in °C. It is switched on at 23 °C; each module then approaches a
/// temperature of its own exponentially, with a time constant of its own, and every reading carries some noise, which
/// the seed determines. Readings have a resolution of 0.1 °C. The overall temperature is the mean of the modules'.
///
/// Time passes only when it is told to. Who observes the temperatures is told when a reading has moved.
class TemperatureState final : public ControlState
{
public:
    using Observer = sdk::ITemperatureControl::Observer;
    using Readings = std::unordered_map<std::string, float>;

    TemperatureState(const std::shared_ptr<Machine>& machine, std::uint32_t seed);

    /// Of every control object of these temperatures.
    const Observers<Observer> observers;

    float temperature() const;
    Readings modules() const;

    void passTime(std::chrono::milliseconds time);

    QCborMap save() const override;
    void restore(const QCborMap& saved) override;

private:
    struct Module
    {
        std::string_view name;
        double final;        // °C
        double timeConstant; // s
        double temperature;  // °C, without noise
        float reading;       // °C
    };

    mutable std::mutex m_mutex; // guards all below
    std::mt19937 m_random;
    std::array<Module, 9> m_modules;
};

/// The temperatures as the simulated instrument offers them.
class SimulatedTemperatureControl final : public ObservedControl<sdk::ITemperatureControl>
{
public:
    SimulatedTemperatureControl(std::shared_ptr<Machine> machine, std::shared_ptr<TemperatureState> state);

    float temperature() override;

    /// What the calling thread sees does not change before it asks again.
    const std::unordered_map<std::string, float>& modulesTemperature() override;

private:
    const std::shared_ptr<Machine> m_machine;
    const std::shared_ptr<TemperatureState> m_state;
    PerThread<std::unordered_map<std::string, float>> m_handedOut;
};

} // namespace tov::simulator

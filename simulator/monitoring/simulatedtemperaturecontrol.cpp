#include "simulator/monitoring/simulatedtemperaturecontrol.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tov::simulator {

using namespace Qt::StringLiterals;

namespace {

constexpr double ambient = 23.0; // °C
constexpr double noise = 0.05;   // °C, standard deviation

float rounded(double temperature)
{
    return static_cast<float>(std::round(temperature * 10.0) / 10.0);
}

} // namespace

TemperatureState::TemperatureState(const std::shared_ptr<Machine>& machine, std::uint32_t seed)
    : observers(machine)
    , m_random(seed)
    , m_modules{{{"Digital board", 46.0, 180.0, ambient, rounded(ambient)},
                 {"Front end", 41.0, 240.0, ambient, rounded(ambient)},
                 {"Kz515", 52.0, 150.0, ambient, rounded(ambient)},
                 {"Power supply", 55.0, 90.0, ambient, rounded(ambient)},
                 {"Receiver", 43.0, 200.0, ambient, rounded(ambient)},
                 {"Reference", 60.0, 60.0, ambient, rounded(ambient)},
                 {"Ulk", 48.0, 160.0, ambient, rounded(ambient)},
                 {"Wn0807", 50.0, 140.0, ambient, rounded(ambient)},
                 {"Yq", 57.0, 120.0, ambient, rounded(ambient)}}}
{
}

float TemperatureState::temperature() const
{
    const std::lock_guard guard(m_mutex);
    double sum = 0.0;
    for (const Module& module : m_modules)
        sum += static_cast<double>(module.reading);
    return rounded(sum / static_cast<double>(m_modules.size()));
}

TemperatureState::Readings TemperatureState::modules() const
{
    const std::lock_guard guard(m_mutex);
    Readings readings;
    for (const Module& module : m_modules)
        readings[std::string(module.name)] = module.reading;
    return readings;
}

void TemperatureState::passTime(std::chrono::milliseconds time)
{
    bool moved = false;
    {
        const std::lock_guard guard(m_mutex);
        const double seconds = std::chrono::duration<double>(time).count();
        for (Module& module : m_modules) {
            module.temperature +=
                (module.final - module.temperature) * (1.0 - std::exp(-seconds / module.timeConstant));
            const float reading = rounded(module.temperature + std::normal_distribution(0.0, noise)(m_random));
            moved = moved || reading != module.reading;
            module.reading = reading;
        }
    }
    if (moved)
        observers.notify(&Observer::onTemperatureChanged);
}

QCborMap TemperatureState::save() const
{
    const std::lock_guard guard(m_mutex);
    QCborMap saved;
    for (const Module& module : m_modules)
        saved.insert(QString::fromUtf8(module.name), module.temperature);
    return saved;
}

void TemperatureState::restore(const QCborMap& saved)
{
    const std::lock_guard guard(m_mutex);
    for (Module& module : m_modules) {
        module.temperature = saved[QString::fromUtf8(module.name)].toDouble(ambient);
        module.reading = rounded(module.temperature);
    }
}

SimulatedTemperatureControl::SimulatedTemperatureControl(std::shared_ptr<Machine> machine,
                                                         std::shared_ptr<TemperatureState> state)
    : ObservedControl(state->observers, Operation::TemperatureObserve)
    , m_machine(std::move(machine))
    , m_state(std::move(state))
{
}

float SimulatedTemperatureControl::temperature()
{
    m_machine->begin(Operation::TemperatureRead);
    return m_state->temperature();
}

const std::unordered_map<std::string, float>& SimulatedTemperatureControl::modulesTemperature()
{
    m_machine->begin(Operation::TemperatureReadModules);
    auto& readings = m_handedOut.own();
    readings = m_state->modules();
    return readings;
}

} // namespace tov::simulator

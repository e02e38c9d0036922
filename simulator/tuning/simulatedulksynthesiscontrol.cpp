#include "simulator/tuning/simulatedulksynthesiscontrol.h"

#include <array>
#include <utility>

namespace tov::simulator {

namespace {

constexpr std::array ifs = {2.5e6, 7.5e6, 10.7e6, 21.4e6};
constexpr std::array references = {5e6, 10e6, 100e6};

} // namespace

std::shared_ptr<ModuleState> SimulatedUlkSynthesisControl::makeState()
{
    using Beyond = ModuleSetting::Beyond;
    return std::make_shared<ModuleState>(std::vector<ModuleSetting>{
        {"loLeakageMode", 0, 0, 1, Beyond::Refuse},
        {"manualIf", 0, 0, 1, Beyond::Refuse},
        {"selectedIf", 0, 0, ifs.size() - 1.0, Beyond::Refuse},
        {"filter1Frequency", 1e9, 10e6, 8e9, Beyond::Clamp},
        {"manualRef", 0, 0, 1, Beyond::Refuse},
        {"selectedRef", 0, 0, references.size() - 1.0, Beyond::Refuse},
    });
}

SimulatedUlkSynthesisControl::SimulatedUlkSynthesisControl(std::shared_ptr<ModuleState> state)
    : m_state(std::move(state))
{
}

void SimulatedUlkSynthesisControl::setLoLeakageMode(bool on)
{
    m_state->set("loLeakageMode", on ? 1.0 : 0.0);
}

bool SimulatedUlkSynthesisControl::loLeakageMode()
{
    return m_state->number("loLeakageMode") != 0.0;
}

void SimulatedUlkSynthesisControl::enableManualIf(bool enabled)
{
    m_state->set("manualIf", enabled ? 1.0 : 0.0);
}

bool SimulatedUlkSynthesisControl::manualIfEnabled()
{
    return m_state->number("manualIf") != 0.0;
}

void SimulatedUlkSynthesisControl::setSelectedIf(int index)
{
    m_state->set("selectedIf", index);
}

int SimulatedUlkSynthesisControl::selectedIf()
{
    return static_cast<int>(m_state->number("selectedIf"));
}

std::span<const double> SimulatedUlkSynthesisControl::supportedIfs()
{
    return ifs;
}

void SimulatedUlkSynthesisControl::setFilter1Frequency(double frequency)
{
    m_state->set("filter1Frequency", frequency);
}

double SimulatedUlkSynthesisControl::filter1Frequency()
{
    return m_state->number("filter1Frequency");
}

void SimulatedUlkSynthesisControl::enableManualRef(bool enabled)
{
    m_state->set("manualRef", enabled ? 1.0 : 0.0);
}

bool SimulatedUlkSynthesisControl::manualRefEnabled()
{
    return m_state->number("manualRef") != 0.0;
}

void SimulatedUlkSynthesisControl::setSelectedRef(int index)
{
    m_state->set("selectedRef", index);
}

int SimulatedUlkSynthesisControl::selectedRef()
{
    return static_cast<int>(m_state->number("selectedRef"));
}

std::span<const double> SimulatedUlkSynthesisControl::supportedRefs()
{
    return references;
}

void SimulatedUlkSynthesisControl::reset()
{
    m_state->reset();
}

} // namespace tov::simulator

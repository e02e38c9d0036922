#include "simulator/tuning/simulatedkz515synthesiscontrol.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tov::simulator {

namespace {

constexpr std::array frequencies = {5e6, 10e6, 100e6};

} // namespace

std::shared_ptr<ModuleState> SimulatedKz515SynthesisControl::makeState()
{
    using Beyond = ModuleSetting::Beyond;
    return std::make_shared<ModuleState>(std::vector<ModuleSetting>{
        {"referenceFrequency", 10e6, 0, 1e9, Beyond::Refuse},
    });
}

SimulatedKz515SynthesisControl::SimulatedKz515SynthesisControl(std::shared_ptr<ModuleState> state)
    : m_state(std::move(state))
{
}

std::vector<double> SimulatedKz515SynthesisControl::availableReferenceFrequencies()
{
    return {frequencies.begin(), frequencies.end()};
}

double SimulatedKz515SynthesisControl::currentReferenceFrequency()
{
    return m_state->number("referenceFrequency");
}

void SimulatedKz515SynthesisControl::setReferenceFrequency(double frequency)
{
    if (std::ranges::find(frequencies, frequency) != frequencies.end())
        m_state->set("referenceFrequency", frequency);
}

} // namespace tov::simulator

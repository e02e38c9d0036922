#include "simulator/simulatedyqsynthesiscontrol.h"

#include <utility>

namespace tov::simulator {

SimulatedYqSynthesisControl::SimulatedYqSynthesisControl(std::shared_ptr<YqSynthesisState> state)
    : m_state(std::move(state))
{
}

void SimulatedYqSynthesisControl::enableManualIf(bool enabled)
{
    m_state->manualIf = enabled;
}

bool SimulatedYqSynthesisControl::manualIfEnabled()
{
    return m_state->manualIf;
}

void SimulatedYqSynthesisControl::setSelectedIf(int index)
{
    if (std::cmp_greater_equal(index, 0) && std::cmp_less(index, YqSynthesisState::supportedIfs.size()))
        m_state->selectedIf = index;
}

int SimulatedYqSynthesisControl::selectedIf()
{
    return m_state->selectedIf;
}

std::span<const double> SimulatedYqSynthesisControl::supportedIfs()
{
    return YqSynthesisState::supportedIfs;
}

} // namespace tov::simulator

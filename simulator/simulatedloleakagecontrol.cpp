#include "simulator/simulatedloleakagecontrol.h"

#include <utility>

namespace tov::simulator {

SimulatedLoLeakageControl::SimulatedLoLeakageControl(std::shared_ptr<LoLeakageState> state)
    : m_state(std::move(state))
{
}

bool SimulatedLoLeakageControl::isEnabled()
{
    return m_state->enabled;
}

void SimulatedLoLeakageControl::setEnabled(bool enabled)
{
    m_state->enabled = enabled;
}

} // namespace tov::simulator

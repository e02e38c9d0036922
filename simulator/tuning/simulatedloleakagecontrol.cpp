#include "simulator/tuning/simulatedloleakagecontrol.h"

#include <utility>

namespace tov::simulator {

using namespace Qt::StringLiterals;

QCborMap LoLeakageState::save() const
{
    return {{"enabled"_L1, enabled.load()}};
}

void LoLeakageState::restore(const QCborMap& saved)
{
    enabled = saved["enabled"_L1].toBool();
}

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

#include "simulator/tuning/simulatedyqsynthesiscontrol.h"

#include <utility>

namespace tov::simulator {

using namespace Qt::StringLiterals;

QCborMap YqSynthesisState::save() const
{
    return {{"manual IF"_L1, manualIf.load()}, {"selected IF"_L1, selectedIf.load()}};
}

void YqSynthesisState::restore(const QCborMap& saved)
{
    manualIf = saved["manual IF"_L1].toBool();
    selectedIf = static_cast<int>(saved["selected IF"_L1].toInteger());
}

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

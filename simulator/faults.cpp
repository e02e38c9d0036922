#include "simulator/faults.h"

namespace tov::simulator {

template <typename Change>
void Faults::change(Operation operation, Change change)
{
    const std::lock_guard guard(m_mutex);
    change(m_faults[operation]);
}

void Faults::answerWith(Operation operation, std::error_code error)
{
    change(operation, [&](Fault& fault) { fault.error = error; });
}

void Faults::answerLate(Operation operation, std::chrono::microseconds delay)
{
    change(operation, [&](Fault& fault) { fault.delay = delay; });
}

void Faults::throwFrom(Operation operation)
{
    change(operation, [](Fault& fault) { fault.throws = true; });
}

void Faults::releaseControlsDuring(Operation operation)
{
    change(operation, [](Fault& fault) { fault.releasesControls = true; });
}

void Faults::spare(Operation operation, unsigned int calls)
{
    change(operation, [&](Fault& fault) { fault.spared = calls; });
}

void Faults::heal(Operation operation)
{
    change(operation, [](Fault& fault) { fault = {}; });
}

Fault Faults::next(Operation operation)
{
    const std::lock_guard guard(m_mutex);
    const auto found = m_faults.find(operation);
    if (found == m_faults.end())
        return {};
    if (found->second.spared == 0)
        return found->second;
    --found->second.spared;
    return {};
}

} // namespace tov::simulator

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

void Faults::heal(Operation operation)
{
    change(operation, [](Fault& fault) { fault = {}; });
}

Fault Faults::of(Operation operation) const
{
    const std::lock_guard guard(m_mutex);
    const auto found = m_faults.find(operation);
    return found != m_faults.end() ? found->second : Fault();
}

} // namespace tov::simulator

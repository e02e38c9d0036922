#include "relaybyhand.h"

namespace tov::benchmarks {

void RelayByHand::onSerialNumberEvent(unsigned int a, unsigned int b)
{
    const devices::service::SerialNumberEvent event{.first = b, .second = a};
    const std::lock_guard guard(m_mutex);
    for (Observer* observer : m_observers)
        observer->onSerialNumberEvent(event);
}

} // namespace tov::benchmarks

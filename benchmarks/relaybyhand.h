#pragma once

#include "sdk/service/imemoryserialnumbercontrol.h"
#include "service/memory/iserialnumbercontrol.h"

#include <mutex>
#include <vector>

namespace tov::benchmarks {

/// What a relay does at least. It stands in a library of its own, as the adapter does: no compiler sees whom it calls,
/// and calls from a library into the program cost more than those within the program.
class RelayByHand final : public sdk::service::IMemorySerialNumberControl::Observer
{
public:
    using Observer = devices::service::ISerialNumberControl::Observer;

    void onSerialNumberEvent(unsigned int a, unsigned int b) override;
    void addObserver(Observer* observer) { m_observers.push_back(observer); }

private:
    std::mutex m_mutex;
    std::vector<Observer*> m_observers;
};

} // namespace tov::benchmarks

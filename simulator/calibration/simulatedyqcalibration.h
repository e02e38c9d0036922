#pragma once

#include "simulator/faults.h"
#include "simulator/support/observers.h"

#include <memory>
#include <utility>

namespace tov::simulator {

/// What the two calibrations of the Yq module have in common as the simulated instrument offers them.
///
/// A save is told by state 1 and the first event, and when the data are stored by state 2 and the second event. One
/// that empties the store is told by state 0 and the third event instead of the latter.
template <typename SdkIface>
class SimulatedYqCalibration : public ObservedControl<SdkIface>
{
public:
    using Observer = typename SdkIface::Observer;

    SimulatedYqCalibration(std::shared_ptr<Machine> machine, Operation plan, Operation observing)
        : ObservedControl<SdkIface>(Observers<Observer>(machine), observing)
        , m_machine(std::move(machine))
        , m_plan(plan)
    {
    }

    /// From 10 MHz to 20 GHz, in Hz.
    sdk::FrequencyPlan frequencyPlan() override
    {
        m_machine->begin(m_plan);
        return {{{10e6, 1e9, 100}, {1e9, 8e9, 141}, {8e9, 20e9, 121}}};
    }

protected:
    /// Does `store` as the operation `save` and tells about it.
    template <typename Store>
    void save(Operation save, bool empty, Store store)
    {
        m_machine->begin(save);
        store();
        this->m_observers.notify([](Observer& observer) { observer.onStateChanged(1); }, &Observer::onFirstEvent,
                                 [=](Observer& observer) { observer.onStateChanged(empty ? 0 : 2); },
                                 empty ? &Observer::onThirdEvent : &Observer::onSecondEvent);
    }

private:
    const std::shared_ptr<Machine> m_machine;
    const Operation m_plan;
};

} // namespace tov::simulator

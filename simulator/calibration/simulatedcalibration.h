#pragma once

#include "simulator/faults.h"
#include "simulator/support/machine.h"
#include "simulator/support/observerhub.h"

#include <memory>
#include <utility>

namespace tov::simulator {

/// What the two calibrations of the Yq module have in common as the simulated instrument offers them.
///
/// A save is told by state 1 and the first event, and when the data are stored by state 2 and the second event. One
/// that empties the store is told by state 0 and the third event instead of the latter.
template <typename SdkIface>
class SimulatedCalibration : public SdkIface
{
public:
    using Observer = typename SdkIface::Observer;

    SimulatedCalibration(std::shared_ptr<Machine> machine, Operation plan)
        : m_machine(std::move(machine))
        , m_plan(plan)
    {
    }
    SimulatedCalibration(const SimulatedCalibration&) = delete;
    SimulatedCalibration& operator=(const SimulatedCalibration&) = delete;
    ~SimulatedCalibration() override { m_observers->close(); }

    void addObserver(Observer* observer) override { m_observers->add(observer); }
    void removeObserver(Observer* observer) override { m_observers->remove(observer); }

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
        m_machine->notify([observers = m_observers, empty] {
            observers->notify(&Observer::onStateChanged, 1);
            observers->notify(&Observer::onFirstEvent);
            observers->notify(&Observer::onStateChanged, empty ? 0 : 2);
            observers->notify(empty ? &Observer::onThirdEvent : &Observer::onSecondEvent);
        });
    }

private:
    const std::shared_ptr<Machine> m_machine;
    const Operation m_plan;
    const std::shared_ptr<ObserverHub<Observer>> m_observers = std::make_shared<ObserverHub<Observer>>();
};

} // namespace tov::simulator

#include "simulator/simulatedinstrument.h"

#include "devices/controlkeys.h"
#include "simulator/simulatedloleakagecontrol.h"
#include "simulator/simulatedyqsynthesiscontrol.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace tov::simulator {

namespace controlkeys = devices::controlkeys;

// The control is erased from its interface pointer, which is what a user of the key casts it back to.
template <typename SdkIface, typename Control, typename State>
SimulatedInstrument::Slot SimulatedInstrument::makeSlot(sdk::Key key)
{
    return {.key = key,
            .makeControl = [state = std::make_shared<State>()]() -> std::shared_ptr<void> {
                return std::shared_ptr<SdkIface>(std::make_shared<Control>(state));
            },
            .control = nullptr};
}

SimulatedInstrument::SimulatedInstrument()
{
    using namespace sdk::service;

    m_slots.push_back(
        makeSlot<ILoLeakageControl, SimulatedLoLeakageControl, LoLeakageState>(controlkeys::loLeakage.sdk));
    m_slots.push_back(
        makeSlot<IYqSynthesisControl, SimulatedYqSynthesisControl, YqSynthesisState>(controlkeys::yqSynthesis.sdk));

    offerControls();
}

SimulatedInstrument::~SimulatedInstrument() = default;

std::shared_ptr<void> SimulatedInstrument::findControl(sdk::Key key)
{
    const std::lock_guard guard(m_mutex);
    const auto found = std::ranges::find(m_slots, key, &Slot::key);
    return found != m_slots.end() ? found->control : nullptr;
}

std::vector<sdk::Key> SimulatedInstrument::controlKeys() const
{
    const std::lock_guard guard(m_mutex);
    std::vector<sdk::Key> keys;
    std::ranges::transform(m_slots, std::back_inserter(keys), &Slot::key);
    return keys;
}

void SimulatedInstrument::releaseControls()
{
    std::vector<std::shared_ptr<void>> released;
    const std::lock_guard guard(m_mutex);
    released.reserve(m_slots.size());
    for (Slot& slot : m_slots)
        released.push_back(std::exchange(slot.control, nullptr));
    m_offering = false;
}

void SimulatedInstrument::offerControls()
{
    const std::lock_guard guard(m_mutex);
    m_offering = true;
    for (Slot& slot : m_slots)
        offer(slot);
}

void SimulatedInstrument::unfitControl(sdk::Key key)
{
    std::shared_ptr<void> released;
    const std::lock_guard guard(m_mutex);
    Slot& unfitted = slot(key);
    unfitted.fitted = false;
    released = std::exchange(unfitted.control, nullptr);
}

void SimulatedInstrument::fitControl(sdk::Key key)
{
    const std::lock_guard guard(m_mutex);
    Slot& fitted = slot(key);
    fitted.fitted = true;
    offer(fitted);
}

SimulatedInstrument::Slot& SimulatedInstrument::slot(sdk::Key key)
{
    const auto found = std::ranges::find(m_slots, key, &Slot::key);
    if (found == m_slots.end())
        throw std::out_of_range("the simulated instrument has no control of this key");
    return *found;
}

void SimulatedInstrument::offer(Slot& slot) const
{
    if (m_offering && slot.fitted && !slot.control)
        slot.control = slot.makeControl();
}

} // namespace tov::simulator

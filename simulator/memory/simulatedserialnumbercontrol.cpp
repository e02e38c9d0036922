#include "simulator/memory/simulatedserialnumbercontrol.h"

#include "simulator/support/cborvalues.h"

#include <utility>

namespace tov::simulator {

using namespace Qt::StringLiterals;

QCborMap SerialNumberState::save() const
{
    return {{"number"_L1, static_cast<qint64>(number.load())}};
}

void SerialNumberState::restore(const QCborMap& saved)
{
    number = static_cast<unsigned int>(restoreInteger(saved["number"_L1]));
}

SimulatedSerialNumberControl::SimulatedSerialNumberControl(std::shared_ptr<Machine> machine,
                                                           std::shared_ptr<SerialNumberState> state)
    : ObservedControl(Observers<Observer>(machine), Operation::SerialNumberObserve)
    , m_machine(std::move(machine))
    , m_state(std::move(state))
{
}

void SimulatedSerialNumberControl::readSerialNumber(std::function<void(unsigned int, std::error_code)> answer)
{
    m_machine->answer<unsigned int>(Operation::SerialNumberRead, std::move(answer),
                                    [state = m_state] { return state->number.load(); });
}

void SimulatedSerialNumberControl::writeSerialNumber(unsigned int serialNumber,
                                                     std::function<void(std::error_code)> answer)
{
    m_machine->answer(
        Operation::SerialNumberWrite, std::move(answer), [state = m_state, observers = m_observers, serialNumber] {
            const std::lock_guard guard(state->replacing);
            const unsigned int previous = state->number.exchange(serialNumber);
            observers.notify([=](Observer& observer) { observer.onSerialNumberEvent(previous, serialNumber); });
            return std::error_code();
        });
}

} // namespace tov::simulator

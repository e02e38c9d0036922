#include "simulator/memory/simulatedmemoryoperationscontrol.h"

#include "simulator/support/cborvalues.h"
#include "simulator/support/simulatorerror.h"

#include <algorithm>
#include <utility>

namespace tov::simulator {

using namespace Qt::StringLiterals;

namespace {

constexpr std::byte erased{0xFF};

} // namespace

MemoryState::MemoryState(std::size_t size)
    : m_contents(size, erased)
    , m_intended(m_contents)
{
}

std::vector<std::byte> MemoryState::read() const
{
    const std::lock_guard guard(m_mutex);
    return m_contents;
}

std::error_code MemoryState::write(const std::vector<std::byte>& data)
{
    const std::lock_guard guard(m_mutex);
    if (data.size() > m_contents.size())
        return SimulatorError::OutOfRange;
    const auto rest = std::ranges::copy(data, m_contents.begin()).out;
    std::fill(rest, m_contents.end(), erased);
    m_intended = m_contents;
    return {};
}

void MemoryState::erase()
{
    const std::lock_guard guard(m_mutex);
    std::ranges::fill(m_contents, erased);
    m_intended = m_contents;
}

std::error_code MemoryState::check() const
{
    const std::lock_guard guard(m_mutex);
    return m_contents == m_intended ? std::error_code() : SimulatorError::MemoryDamaged;
}

void MemoryState::damage(std::size_t offset)
{
    const std::lock_guard guard(m_mutex);
    m_contents.at(offset) = ~m_intended.at(offset);
}

std::size_t MemoryState::size() const
{
    const std::lock_guard guard(m_mutex);
    return m_contents.size();
}

QCborMap MemoryState::save() const
{
    const std::lock_guard guard(m_mutex);
    return {{"contents"_L1, saveBytes(m_contents)}, {"intended"_L1, saveBytes(m_intended)}};
}

void MemoryState::restore(const QCborMap& saved)
{
    const std::lock_guard guard(m_mutex);
    m_contents = restoreBytes<std::byte>(saved["contents"_L1].toByteArray());
    m_intended = restoreBytes<std::byte>(saved["intended"_L1].toByteArray());
}

SimulatedMemoryOperationsControl::SimulatedMemoryOperationsControl(std::shared_ptr<Machine> machine,
                                                                   std::shared_ptr<MemoryState> state)
    : ObservedControl(Observers<IObserver>(machine), Operation::MemoryObserve)
    , m_machine(std::move(machine))
    , m_state(std::move(state))
{
}

// Tells the observers of an operation in four steps, on the machine's thread.
std::function<void()> SimulatedMemoryOperationsControl::progress(Notification notification) const
{
    return [observers = m_observers, total = static_cast<unsigned int>(m_state->size()), notification] {
        for (unsigned int quarter = 1; quarter <= 4; ++quarter)
            observers.notify([=](IObserver& observer) { (observer.*notification)(total / 4 * quarter, total); });
    };
}

void SimulatedMemoryOperationsControl::read(std::function<void(std::vector<std::byte>, std::error_code)> answer)
{
    m_machine->answer<std::vector<std::byte>>(Operation::MemoryRead, std::move(answer),
                                              [state = m_state, tell = progress(&IObserver::onNotification1)] {
                                                  tell();
                                                  return state->read();
                                              });
}

void SimulatedMemoryOperationsControl::write(std::vector<std::byte> data, std::function<void(std::error_code)> answer)
{
    m_machine->answer(Operation::MemoryWrite, std::move(answer),
                      [state = m_state, data = std::move(data), tell = progress(&IObserver::onNotification2)] {
                          const std::error_code error = state->write(data);
                          if (!error)
                              tell();
                          return error;
                      });
}

void SimulatedMemoryOperationsControl::erase(std::function<void(std::error_code)> answer)
{
    m_machine->answer(Operation::MemoryErase, std::move(answer),
                      [state = m_state, tell = progress(&IObserver::onNotification3)] {
                          state->erase();
                          tell();
                          return std::error_code();
                      });
}

void SimulatedMemoryOperationsControl::integrityCheck(std::function<void(std::error_code)> answer)
{
    m_machine->answer(Operation::MemoryCheck, std::move(answer),
                      [state = m_state, tell = progress(&IObserver::onNotification4)] {
                          tell();
                          return state->check();
                      });
}

} // namespace tov::simulator

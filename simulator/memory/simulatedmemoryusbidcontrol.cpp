#include "simulator/memory/simulatedmemoryusbidcontrol.h"

#include "simulator/support/cborvalues.h"

#include <QCborArray>

#include <utility>

namespace tov::simulator {

using namespace Qt::StringLiterals;

UsbIdState::UsbId UsbIdState::current() const
{
    const std::lock_guard guard(m_mutex);
    return {m_words.id1, m_words.id2, m_words.id3, sdk::Model::TwoPort8, 2, 0x5A56'4C00'0000'0001, 8'000'000'000};
}

void UsbIdState::write(const UsbIdWords& words)
{
    const std::lock_guard guard(m_mutex);
    m_words = words;
}

QCborMap UsbIdState::save() const
{
    const std::lock_guard guard(m_mutex);
    return {{"words"_L1, QCborArray{m_words.id1, m_words.id2, m_words.id3}}};
}

void UsbIdState::restore(const QCborMap& saved)
{
    const QCborArray words = saved["words"_L1].toArray();
    const auto word = [&](qsizetype i) { return static_cast<std::uint16_t>(restoreInteger(words.at(i))); };
    write({word(0), word(1), word(2)});
}

SimulatedMemoryUsbIdControl::SimulatedMemoryUsbIdControl(std::shared_ptr<Machine> machine,
                                                         std::shared_ptr<UsbIdState> state)
    : m_machine(std::move(machine))
    , m_state(std::move(state))
{
}

SimulatedMemoryUsbIdControl::UsbId SimulatedMemoryUsbIdControl::usbId()
{
    m_machine->begin(Operation::UsbIdRead);
    return m_state->current();
}

std::vector<SimulatedMemoryUsbIdControl::UsbId> SimulatedMemoryUsbIdControl::usbIds()
{
    using sdk::Model;
    m_machine->begin(Operation::UsbIdList);
    return {{0x2A17, 0x0103, 0x0001, Model::TwoPort3, 1, 0x5A56'4C00'0000'0001, 3'000'000'000},
            {0x2A17, 0x0108, 0x0001, Model::TwoPort8, 2, 0x5A56'4C00'0000'0001, 8'000'000'000},
            {0x2A17, 0x0208, 0x0001, Model::FourPort8, 3, 0x5A56'4C00'0000'0002, 8'000'000'000},
            {0x2A17, 0x0120, 0x0001, Model::TwoPort20, 4, 0x5A56'4C00'0000'0001, 20'000'000'000},
            {0x2A17, 0x0220, 0x0001, Model::FourPort20, 5, 0x5A56'4C00'0000'0002, 20'000'000'000}};
}

void SimulatedMemoryUsbIdControl::writeUsbId(const UsbIdWords& words, std::function<void(std::error_code)> answer)
{
    m_machine->answer(Operation::UsbIdWrite, std::move(answer), [state = m_state, words] {
        state->write(words);
        return std::error_code();
    });
}

} // namespace tov::simulator

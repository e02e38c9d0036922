#include "simulator/memory/simulatedpotentiometerscontrol.h"

#include "simulator/support/cborvalues.h"
#include "simulator/support/simulatorerror.h"

#include <QCborArray>

#include <utility>

namespace tov::simulator {

using namespace Qt::StringLiterals;

PotentiometersState::PotentiometersState()
    : m_potentiometers{{"LO level", 0, 255, 128, 128},         {"RF level port 1", 0, 255, 100, 100},
                       {"RF level port 2", 0, 255, 100, 100},  {"Reference tune", 0, 1023, 512, 512},
                       {"IF gain reference", 0, 255, 64, 64},  {"IF gain measurement", 0, 255, 64, 64},
                       {"ADC offset port 1", -128, 127, 0, 0}, {"ADC offset port 2", -128, 127, 0, 0}}
{
}

std::vector<PotentiometersState::PotentiometerInfo> PotentiometersState::list() const
{
    const std::lock_guard guard(m_mutex);
    std::vector<PotentiometerInfo> list;
    list.reserve(m_potentiometers.size());
    for (const Potentiometer& potentiometer : m_potentiometers)
        list.push_back({potentiometer.name, potentiometer.smallest, potentiometer.largest});
    return list;
}

std::expected<int, std::error_code> PotentiometersState::readRam(std::size_t index) const
{
    return read(index, &Potentiometer::ram);
}

std::expected<int, std::error_code> PotentiometersState::readEeprom(std::size_t index) const
{
    return read(index, &Potentiometer::eeprom);
}

std::error_code PotentiometersState::writeRam(std::size_t index, int value)
{
    return write(index, &Potentiometer::ram, value);
}

std::error_code PotentiometersState::writeEeprom(std::size_t index, int value)
{
    return write(index, &Potentiometer::eeprom, value);
}

std::expected<int, std::error_code> PotentiometersState::read(std::size_t index, int Potentiometer::* memory) const
{
    const std::lock_guard guard(m_mutex);
    if (index >= m_potentiometers.size())
        return std::unexpected(make_error_code(SimulatorError::NoSuchPotentiometer));
    return m_potentiometers[index].*memory;
}

std::error_code PotentiometersState::write(std::size_t index, int Potentiometer::* memory, int value)
{
    const std::lock_guard guard(m_mutex);
    if (index >= m_potentiometers.size())
        return SimulatorError::NoSuchPotentiometer;
    Potentiometer& potentiometer = m_potentiometers[index];
    if (value < potentiometer.smallest || value > potentiometer.largest)
        return SimulatorError::OutOfRange;
    potentiometer.*memory = value;
    return {};
}

QCborMap PotentiometersState::save() const
{
    const std::lock_guard guard(m_mutex);
    QCborArray values;
    for (const Potentiometer& potentiometer : m_potentiometers)
        values.append(QCborMap{{"RAM"_L1, potentiometer.ram}, {"EEPROM"_L1, potentiometer.eeprom}});
    return {{"values"_L1, values}};
}

void PotentiometersState::restore(const QCborMap& saved)
{
    const std::lock_guard guard(m_mutex);
    const QCborArray values = saved["values"_L1].toArray();
    for (std::size_t i = 0; i < m_potentiometers.size(); ++i) {
        const QCborMap value = values.at(static_cast<qsizetype>(i)).toMap();
        m_potentiometers[i].ram = static_cast<int>(restoreInteger(value["RAM"_L1]));
        m_potentiometers[i].eeprom = static_cast<int>(restoreInteger(value["EEPROM"_L1]));
    }
}

SimulatedPotentiometersControl::SimulatedPotentiometersControl(std::shared_ptr<Machine> machine,
                                                               std::shared_ptr<PotentiometersState> state)
    : m_machine(std::move(machine))
    , m_state(std::move(state))
{
}

std::vector<SimulatedPotentiometersControl::PotentiometerInfo> SimulatedPotentiometersControl::potentiometers()
{
    m_machine->begin(Operation::PotentiometerList);
    return m_state->list();
}

void SimulatedPotentiometersControl::readFromEeprom(std::size_t index, std::function<void(int, std::error_code)> answer)
{
    m_machine->answer<int>(Operation::PotentiometerReadEeprom, std::move(answer),
                           [state = m_state, index] { return state->readEeprom(index); });
}

void SimulatedPotentiometersControl::writeToRam(std::size_t index, int value,
                                                std::function<void(std::error_code)> answer)
{
    m_machine->answer(Operation::PotentiometerWriteRam, std::move(answer),
                      [state = m_state, index, value] { return state->writeRam(index, value); });
}

void SimulatedPotentiometersControl::writeToEeprom(std::size_t index, int value,
                                                   std::function<void(std::error_code)> answer)
{
    m_machine->answer(Operation::PotentiometerWriteEeprom, std::move(answer),
                      [state = m_state, index, value] { return state->writeEeprom(index, value); });
}

} // namespace tov::simulator

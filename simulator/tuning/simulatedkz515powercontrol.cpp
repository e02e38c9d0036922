#include "simulator/tuning/simulatedkz515powercontrol.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tov::simulator {

namespace {

constexpr unsigned char mostPower = 100;
constexpr unsigned short mostWord = 4095;
constexpr std::array<unsigned char, 4> gains = {0, 6, 12, 18};

void setGain(ModuleState& state, const std::string& setting, unsigned char gain)
{
    if (std::ranges::find(gains, gain) != gains.end())
        state.set(setting, gain);
}

} // namespace

std::shared_ptr<ModuleState> SimulatedKz515PowerControl::makeState()
{
    using Beyond = ModuleSetting::Beyond;
    return std::make_shared<ModuleState>(std::vector<ModuleSetting>{
        {"powerControlMode", 0, 0, 1, Beyond::Refuse},
        {"loPower", 50, 0, mostPower, Beyond::Clamp},
        {"rfPower", 50, 0, mostPower, Beyond::Clamp},
        {"dacControlMode", 0, 0, 1, Beyond::Refuse},
        {"dacMode", 0, 0, 2, Beyond::Refuse},
        {"dacA", 2048, 0, mostWord, Beyond::Clamp},
        {"dacB", 2048, 0, mostWord, Beyond::Clamp},
        {"referenceGain", 0, 0, 255, Beyond::Refuse},
        {"signalGain", 0, 0, 255, Beyond::Refuse},
    });
}

SimulatedKz515PowerControl::SimulatedKz515PowerControl(std::shared_ptr<ModuleState> state)
    : m_state(std::move(state))
{
}

unsigned char SimulatedKz515PowerControl::maxPowerValue()
{
    return mostPower;
}

SimulatedKz515PowerControl::ControlMode SimulatedKz515PowerControl::powerControlMode()
{
    return static_cast<ControlMode>(static_cast<int>(m_state->number("powerControlMode")));
}

void SimulatedKz515PowerControl::setPowerControlMode(ControlMode mode)
{
    m_state->set("powerControlMode", static_cast<int>(mode));
}

unsigned char SimulatedKz515PowerControl::loPower()
{
    return static_cast<unsigned char>(m_state->number("loPower"));
}

void SimulatedKz515PowerControl::setLoPower(unsigned char value)
{
    m_state->set("loPower", value);
}

unsigned char SimulatedKz515PowerControl::rfPower()
{
    return static_cast<unsigned char>(m_state->number("rfPower"));
}

void SimulatedKz515PowerControl::setRfPower(unsigned char value)
{
    m_state->set("rfPower", value);
}

unsigned short SimulatedKz515PowerControl::maxDacValue()
{
    return mostWord;
}

SimulatedKz515PowerControl::ControlMode SimulatedKz515PowerControl::dacControlMode()
{
    return static_cast<ControlMode>(static_cast<int>(m_state->number("dacControlMode")));
}

void SimulatedKz515PowerControl::setDacControlMode(ControlMode mode)
{
    m_state->set("dacControlMode", static_cast<int>(mode));
}

int SimulatedKz515PowerControl::dacMode()
{
    return static_cast<int>(m_state->number("dacMode"));
}

void SimulatedKz515PowerControl::setDacMode(int value)
{
    m_state->set("dacMode", value);
}

unsigned short SimulatedKz515PowerControl::unionDac()
{
    return static_cast<unsigned short>(m_state->number("dacA"));
}

void SimulatedKz515PowerControl::setUnionDac(unsigned short word)
{
    m_state->set("dacA", word);
    m_state->set("dacB", word);
}

unsigned short SimulatedKz515PowerControl::dacA()
{
    return static_cast<unsigned short>(m_state->number("dacA"));
}

void SimulatedKz515PowerControl::setDacA(unsigned short value)
{
    m_state->set("dacA", value);
}

unsigned short SimulatedKz515PowerControl::dacB()
{
    return static_cast<unsigned short>(m_state->number("dacB"));
}

void SimulatedKz515PowerControl::setDacB(unsigned short value)
{
    m_state->set("dacB", value);
}

std::vector<unsigned char> SimulatedKz515PowerControl::availableGains()
{
    return {gains.begin(), gains.end()};
}

unsigned char SimulatedKz515PowerControl::referenceGain()
{
    return static_cast<unsigned char>(m_state->number("referenceGain"));
}

void SimulatedKz515PowerControl::setReferenceGain(unsigned char gain)
{
    setGain(*m_state, "referenceGain", gain);
}

unsigned char SimulatedKz515PowerControl::signalGain()
{
    return static_cast<unsigned char>(m_state->number("signalGain"));
}

void SimulatedKz515PowerControl::setSignalGain(unsigned char gain)
{
    setGain(*m_state, "signalGain", gain);
}

void SimulatedKz515PowerControl::assignReceiverCorrectionTable(std::vector<unsigned char> table)
{
    m_state->loadTable("receiverCorrection", std::move(table));
}

void SimulatedKz515PowerControl::assignPowerCalibrationTable(std::vector<unsigned char> table)
{
    m_state->loadTable("powerCalibration", std::move(table));
}

} // namespace tov::simulator

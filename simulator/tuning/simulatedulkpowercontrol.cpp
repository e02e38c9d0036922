#include "simulator/tuning/simulatedulkpowercontrol.h"

#include <utility>

namespace tov::simulator {

namespace {

constexpr unsigned char leastCode = 0;
constexpr unsigned char mostCode = 63;
constexpr int defaultStep = 5;

} // namespace

std::shared_ptr<ModuleState> SimulatedUlkPowerControl::makeState()
{
    using Beyond = ModuleSetting::Beyond;
    return std::make_shared<ModuleState>(std::vector<ModuleSetting>{
        {"loPower", 32, leastCode, mostCode, Beyond::Clamp},
        {"rfPower", 32, leastCode, mostCode, Beyond::Clamp},
        {"syntPowerMode", 0, 0, 1, Beyond::Refuse},
        {"attenuationMode", 0, 0, 1, Beyond::Refuse},
        {"attenuationStep", defaultStep, 0, 31, Beyond::Clamp},
        {"stepAttenuatorMode", 0, 0, 3, Beyond::Refuse},
        {"discreteAttenuator", 0, 0, 1, Beyond::Refuse},
        {"discreteAttenuatorMode", 0, 0, 1, Beyond::Refuse},
        {"commonAttenuationMode", 0, 0, 1, Beyond::Refuse},
        {"commonAttenuationStep", 0, 0, 31, Beyond::Clamp},
        {"ampTPort1", 0, 0, 1, Beyond::Refuse},
        {"ampTPort2", 0, 0, 1, Beyond::Refuse},
        {"ampRPort1", 0, 0, 1, Beyond::Refuse},
    });
}

SimulatedUlkPowerControl::SimulatedUlkPowerControl(std::shared_ptr<ModuleState> state)
    : m_state(std::move(state))
{
}

unsigned char SimulatedUlkPowerControl::loPower()
{
    return static_cast<unsigned char>(m_state->number("loPower"));
}

unsigned char SimulatedUlkPowerControl::rfPower()
{
    return static_cast<unsigned char>(m_state->number("rfPower"));
}

void SimulatedUlkPowerControl::setLoPower(unsigned char code)
{
    m_state->set("loPower", code);
}

void SimulatedUlkPowerControl::setRfPower(unsigned char code)
{
    m_state->set("rfPower", code);
}

unsigned char SimulatedUlkPowerControl::minPowerCode()
{
    return leastCode;
}

unsigned char SimulatedUlkPowerControl::maxPowerCode()
{
    return mostCode;
}

void SimulatedUlkPowerControl::setSyntPowerMode(int value)
{
    m_state->set("syntPowerMode", value);
}

int SimulatedUlkPowerControl::syntPowerMode()
{
    return static_cast<int>(m_state->number("syntPowerMode"));
}

void SimulatedUlkPowerControl::setAttenuationMode(int value)
{
    m_state->set("attenuationMode", value);
}

int SimulatedUlkPowerControl::attenuationMode()
{
    return static_cast<int>(m_state->number("attenuationMode"));
}

void SimulatedUlkPowerControl::setAttenuationStep(int value)
{
    m_state->set("attenuationStep", value);
}

int SimulatedUlkPowerControl::attenuationStep()
{
    return static_cast<int>(m_state->number("attenuationStep"));
}

void SimulatedUlkPowerControl::setStepAttenuatorMode(int value)
{
    m_state->set("stepAttenuatorMode", value);
}

int SimulatedUlkPowerControl::stepAttenuatorMode()
{
    return static_cast<int>(m_state->number("stepAttenuatorMode"));
}

int SimulatedUlkPowerControl::defaultAttenuationStep()
{
    return defaultStep;
}

void SimulatedUlkPowerControl::enableDiscreteAttenuator(bool enabled)
{
    m_state->set("discreteAttenuator", enabled ? 1.0 : 0.0);
}

bool SimulatedUlkPowerControl::discreteAttenuatorEnabled()
{
    return m_state->number("discreteAttenuator") != 0.0;
}

void SimulatedUlkPowerControl::setDiscreteAttenuatorMode(int value)
{
    m_state->set("discreteAttenuatorMode", value);
}

int SimulatedUlkPowerControl::discreteAttenuatorMode()
{
    return static_cast<int>(m_state->number("discreteAttenuatorMode"));
}

void SimulatedUlkPowerControl::setCommonAttenuationMode(int value)
{
    m_state->set("commonAttenuationMode", value);
}

int SimulatedUlkPowerControl::commonAttenuationMode()
{
    return static_cast<int>(m_state->number("commonAttenuationMode"));
}

void SimulatedUlkPowerControl::setCommonAttenuationStep(int value)
{
    m_state->set("commonAttenuationStep", value);
}

int SimulatedUlkPowerControl::commonAttenuationStep()
{
    return static_cast<int>(m_state->number("commonAttenuationStep"));
}

void SimulatedUlkPowerControl::setAmpTPort2(unsigned char value)
{
    m_state->set("ampTPort2", value);
}

unsigned char SimulatedUlkPowerControl::ampTPort2()
{
    return static_cast<unsigned char>(m_state->number("ampTPort2"));
}

void SimulatedUlkPowerControl::setAmpRPort1(unsigned char value)
{
    m_state->set("ampRPort1", value);
}

unsigned char SimulatedUlkPowerControl::ampRPort1()
{
    return static_cast<unsigned char>(m_state->number("ampRPort1"));
}

void SimulatedUlkPowerControl::setAmpTPort1(unsigned char value)
{
    m_state->set("ampTPort1", value);
}

unsigned char SimulatedUlkPowerControl::ampTPort1()
{
    return static_cast<unsigned char>(m_state->number("ampTPort1"));
}

void SimulatedUlkPowerControl::setRfPowerCodes(const std::vector<unsigned char>& codes)
{
    m_state->loadTable("rfPowerCodes", codes);
}

void SimulatedUlkPowerControl::setLoPowerCodes(const std::vector<unsigned char>& codes)
{
    m_state->loadTable("loPowerCodes", codes);
}

void SimulatedUlkPowerControl::reset()
{
    m_state->reset();
}

} // namespace tov::simulator

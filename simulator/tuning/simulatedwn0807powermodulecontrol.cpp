#include "simulator/tuning/simulatedwn0807powermodulecontrol.h"

#include <cmath>
#include <utility>

namespace tov::simulator {

namespace {

constexpr double dbPerStep = 0.25;

} // namespace

std::shared_ptr<ModuleState> SimulatedWn0807PowerModuleControl::makeState()
{
    using Beyond = ModuleSetting::Beyond;
    return std::make_shared<ModuleState>(std::vector<ModuleSetting>{
        {"dacMode", 0, 0, 3, Beyond::Refuse},
        {"powerMode", 0, 0, 1, Beyond::Refuse},
        {"stepAttenuatorMode", 0, 0, 4, Beyond::Refuse},
        {"discreteAttenuatorMode", 0, 0, 2, Beyond::Refuse},
        {"powerConstant", 0, 0, 2, Beyond::Refuse},
        {"rfDac", 0, 0, 65535, Beyond::Refuse},
        {"splitDac", 0, 0, 65535, Beyond::Refuse},
        {"splitDds", 0, 0, 65535, Beyond::Refuse},
        {"attenuationStep", 0, 0, 240, Beyond::Clamp},
        {"discreteAttenuator", 0, 0, 1, Beyond::Refuse},
        {"squarePatternStep", 0, 0, 100, Beyond::Clamp},
        {"ddsCorrectionMode", 0, 0, 1, Beyond::Refuse},
        {"ddsCorrection", 0, 0, 1, Beyond::Refuse},
    });
}

SimulatedWn0807PowerModuleControl::SimulatedWn0807PowerModuleControl(std::shared_ptr<ModuleState> state)
    : m_state(std::move(state))
{
}

void SimulatedWn0807PowerModuleControl::setDacMode(int value)
{
    m_state->set("dacMode", value);
}

int SimulatedWn0807PowerModuleControl::dacMode()
{
    return static_cast<int>(m_state->number("dacMode"));
}

void SimulatedWn0807PowerModuleControl::setPowerMode(int value)
{
    m_state->set("powerMode", value);
}

int SimulatedWn0807PowerModuleControl::powerMode()
{
    return static_cast<int>(m_state->number("powerMode"));
}

void SimulatedWn0807PowerModuleControl::setStepAttenuatorMode(int value)
{
    m_state->set("stepAttenuatorMode", value);
}

int SimulatedWn0807PowerModuleControl::stepAttenuatorMode()
{
    return static_cast<int>(m_state->number("stepAttenuatorMode"));
}

void SimulatedWn0807PowerModuleControl::setDiscreteAttenuatorMode(int value)
{
    m_state->set("discreteAttenuatorMode", value);
}

int SimulatedWn0807PowerModuleControl::discreteAttenuatorMode()
{
    return static_cast<int>(m_state->number("discreteAttenuatorMode"));
}

void SimulatedWn0807PowerModuleControl::setPowerConstant(int value)
{
    m_state->set("powerConstant", value);
}

int SimulatedWn0807PowerModuleControl::powerConstant()
{
    return static_cast<int>(m_state->number("powerConstant"));
}

void SimulatedWn0807PowerModuleControl::setRfDac(unsigned short value)
{
    m_state->set("rfDac", value);
}

unsigned short SimulatedWn0807PowerModuleControl::rfDac()
{
    return static_cast<unsigned short>(m_state->number("rfDac"));
}

void SimulatedWn0807PowerModuleControl::setSplitDac(unsigned short value)
{
    m_state->set("splitDac", value);
}

unsigned short SimulatedWn0807PowerModuleControl::splitDac()
{
    return static_cast<unsigned short>(m_state->number("splitDac"));
}

void SimulatedWn0807PowerModuleControl::setSplitDds(unsigned short value)
{
    m_state->set("splitDds", value);
}

unsigned short SimulatedWn0807PowerModuleControl::splitDds()
{
    return static_cast<unsigned short>(m_state->number("splitDds"));
}

void SimulatedWn0807PowerModuleControl::setAttenuationDb(double attenuation)
{
    m_state->set("attenuationStep", std::round(attenuation / dbPerStep));
}

double SimulatedWn0807PowerModuleControl::attenuationDb()
{
    return m_state->number("attenuationStep") * dbPerStep;
}

void SimulatedWn0807PowerModuleControl::setAttenuationStep(unsigned short value)
{
    m_state->set("attenuationStep", value);
}

unsigned short SimulatedWn0807PowerModuleControl::attenuationStep()
{
    return static_cast<unsigned short>(m_state->number("attenuationStep"));
}

void SimulatedWn0807PowerModuleControl::enableDiscreteAttenuator(bool enabled)
{
    m_state->set("discreteAttenuator", enabled ? 1.0 : 0.0);
}

bool SimulatedWn0807PowerModuleControl::discreteAttenuatorEnabled()
{
    return m_state->number("discreteAttenuator") != 0.0;
}

void SimulatedWn0807PowerModuleControl::setSquarePatternStep(double value)
{
    m_state->set("squarePatternStep", value);
}

double SimulatedWn0807PowerModuleControl::squarePatternStep()
{
    return m_state->number("squarePatternStep");
}

void SimulatedWn0807PowerModuleControl::setDdsCorrectionMode(int value)
{
    m_state->set("ddsCorrectionMode", value);
}

int SimulatedWn0807PowerModuleControl::ddsCorrectionMode()
{
    return static_cast<int>(m_state->number("ddsCorrectionMode"));
}

void SimulatedWn0807PowerModuleControl::enableDdsCorrection(bool enabled)
{
    m_state->set("ddsCorrection", enabled ? 1.0 : 0.0);
}

bool SimulatedWn0807PowerModuleControl::ddsCorrectionEnabled()
{
    return m_state->number("ddsCorrection") != 0.0;
}

void SimulatedWn0807PowerModuleControl::assignPowerCalibrationTable(std::vector<unsigned char> table)
{
    m_state->loadTable("powerCalibration", std::move(table));
}

} // namespace tov::simulator

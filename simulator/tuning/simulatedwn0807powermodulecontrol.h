#pragma once

#include "sdk/service/iwn0807powermodulecontrol.h"
#include "simulator/support/modulestate.h"

#include <cmath>
#include <vector>

namespace tov::simulator {

/// The Wn0807 power module. The attenuation goes up to 60 dB in steps of 0.25 dB; beyond, the nearest is taken. Other
/// modes than it has are refused.
class Wn0807PowerState final : public ModuleState
{
public:
    static constexpr double dbPerStep = 0.25;

    Setting<int> dacMode{*this, "dacMode", 0, within(0, 3)};
    Setting<int> powerMode{*this, "powerMode", 0, within(0, 1)};
    Setting<int> stepAttenuatorMode{*this, "stepAttenuatorMode", 0, within(0, 4)};
    Setting<int> discreteAttenuatorMode{*this, "discreteAttenuatorMode", 0, within(0, 2)};
    Setting<int> powerConstant{*this, "powerConstant", 0, within(0, 2)};
    Setting<unsigned short> rfDac{*this, "rfDac", 0, within(0, 65535)};
    Setting<unsigned short> splitDac{*this, "splitDac", 0, within(0, 65535)};
    Setting<unsigned short> splitDds{*this, "splitDds", 0, within(0, 65535)};
    Setting<unsigned short> attenuationStep{*this, "attenuationStep", 0, nearest(0, 240)};
    Setting<bool> discreteAttenuator{*this, "discreteAttenuator", false};
    Setting<double> squarePatternStep{*this, "squarePatternStep", 0, nearest(0, 100)};
    Setting<int> ddsCorrectionMode{*this, "ddsCorrectionMode", 0, within(0, 1)};
    Setting<bool> ddsCorrection{*this, "ddsCorrection", false};
    Table powerCalibration{*this, "powerCalibration"};
};

/// The Wn0807 power control as the simulated instrument offers it. The attenuation is one thing in dB and in steps.
class SimulatedWn0807PowerModuleControl final
    : public ModuleControl<sdk::service::IWn0807PowerModuleControl, Wn0807PowerState>
{
public:
    using ModuleControl::ModuleControl;

    void setDacMode(int mode) override { m_state->dacMode.set(mode); }
    int dacMode() override { return m_state->dacMode.value(); }
    void setPowerMode(int mode) override { m_state->powerMode.set(mode); }
    int powerMode() override { return m_state->powerMode.value(); }
    void setStepAttenuatorMode(int mode) override { m_state->stepAttenuatorMode.set(mode); }
    int stepAttenuatorMode() override { return m_state->stepAttenuatorMode.value(); }
    void setDiscreteAttenuatorMode(int mode) override { m_state->discreteAttenuatorMode.set(mode); }
    int discreteAttenuatorMode() override { return m_state->discreteAttenuatorMode.value(); }
    void setPowerConstant(int constant) override { m_state->powerConstant.set(constant); }
    int powerConstant() override { return m_state->powerConstant.value(); }
    void setRfDac(unsigned short word) override { m_state->rfDac.set(word); }
    unsigned short rfDac() override { return m_state->rfDac.value(); }
    void setSplitDac(unsigned short word) override { m_state->splitDac.set(word); }
    unsigned short splitDac() override { return m_state->splitDac.value(); }
    void setSplitDds(unsigned short word) override { m_state->splitDds.set(word); }
    unsigned short splitDds() override { return m_state->splitDds.value(); }
    void setAttenuationDb(double attenuation) override
    {
        m_state->attenuationStep.setNumber(std::round(attenuation / Wn0807PowerState::dbPerStep));
    }
    double attenuationDb() override { return attenuationStep() * Wn0807PowerState::dbPerStep; }
    void setAttenuationStep(unsigned short step) override { m_state->attenuationStep.set(step); }
    unsigned short attenuationStep() override { return m_state->attenuationStep.value(); }
    void enableDiscreteAttenuator(bool enabled) override { m_state->discreteAttenuator.set(enabled); }
    bool discreteAttenuatorEnabled() override { return m_state->discreteAttenuator.value(); }
    void setSquarePatternStep(double step) override { m_state->squarePatternStep.set(step); }
    double squarePatternStep() override { return m_state->squarePatternStep.value(); }
    void setDdsCorrectionMode(int mode) override { m_state->ddsCorrectionMode.set(mode); }
    int ddsCorrectionMode() override { return m_state->ddsCorrectionMode.value(); }
    void enableDdsCorrection(bool enabled) override { m_state->ddsCorrection.set(enabled); }
    bool ddsCorrectionEnabled() override { return m_state->ddsCorrection.value(); }
    void assignPowerCalibrationTable(std::vector<unsigned char> table) override
    {
        m_state->powerCalibration.load(table);
    }
};

} // namespace tov::simulator

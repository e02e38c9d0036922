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
    static constexpr Operation reading = Operation::Wn0807PowerRead;
    static constexpr Operation changing = Operation::Wn0807PowerChange;

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

    void setDacMode(int mode) override { change().dacMode.set(mode); }
    int dacMode() override { return read().dacMode.value(); }
    void setPowerMode(int mode) override { change().powerMode.set(mode); }
    int powerMode() override { return read().powerMode.value(); }
    void setStepAttenuatorMode(int mode) override { change().stepAttenuatorMode.set(mode); }
    int stepAttenuatorMode() override { return read().stepAttenuatorMode.value(); }
    void setDiscreteAttenuatorMode(int mode) override { change().discreteAttenuatorMode.set(mode); }
    int discreteAttenuatorMode() override { return read().discreteAttenuatorMode.value(); }
    void setPowerConstant(int constant) override { change().powerConstant.set(constant); }
    int powerConstant() override { return read().powerConstant.value(); }
    void setRfDac(unsigned short word) override { change().rfDac.set(word); }
    unsigned short rfDac() override { return read().rfDac.value(); }
    void setSplitDac(unsigned short word) override { change().splitDac.set(word); }
    unsigned short splitDac() override { return read().splitDac.value(); }
    void setSplitDds(unsigned short word) override { change().splitDds.set(word); }
    unsigned short splitDds() override { return read().splitDds.value(); }
    void setAttenuationDb(double attenuation) override
    {
        change().attenuationStep.setNumber(std::round(attenuation / Wn0807PowerState::dbPerStep));
    }
    double attenuationDb() override { return attenuationStep() * Wn0807PowerState::dbPerStep; }
    void setAttenuationStep(unsigned short step) override { change().attenuationStep.set(step); }
    unsigned short attenuationStep() override { return read().attenuationStep.value(); }
    void enableDiscreteAttenuator(bool enabled) override { change().discreteAttenuator.set(enabled); }
    bool discreteAttenuatorEnabled() override { return read().discreteAttenuator.value(); }
    void setSquarePatternStep(double step) override { change().squarePatternStep.set(step); }
    double squarePatternStep() override { return read().squarePatternStep.value(); }
    void setDdsCorrectionMode(int mode) override { change().ddsCorrectionMode.set(mode); }
    int ddsCorrectionMode() override { return read().ddsCorrectionMode.value(); }
    void enableDdsCorrection(bool enabled) override { change().ddsCorrection.set(enabled); }
    bool ddsCorrectionEnabled() override { return read().ddsCorrection.value(); }
    void assignPowerCalibrationTable(std::vector<unsigned char> table) override
    {
        change().powerCalibration.load(table);
    }
};

} // namespace tov::simulator

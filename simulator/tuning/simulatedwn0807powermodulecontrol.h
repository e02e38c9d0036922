#pragma once

#include "sdk/service/iwn0807powermodulecontrol.h"
#include "simulator/support/modulestate.h"

#include <memory>

namespace tov::simulator {

/// The Wn0807 power control as the simulated instrument offers it. The attenuation goes up to 60 dB in steps of 0.25 dB
/// and is one thing in dB and in steps; beyond, the nearest is taken. Other modes than it has are refused.
class SimulatedWn0807PowerModuleControl final : public sdk::service::IWn0807PowerModuleControl
{
public:
    /// The state of such a module as it comes from the factory.
    static std::shared_ptr<ModuleState> makeState();

    explicit SimulatedWn0807PowerModuleControl(std::shared_ptr<ModuleState> state);

    void setDacMode(int value) override;
    int dacMode() override;
    void setPowerMode(int value) override;
    int powerMode() override;
    void setStepAttenuatorMode(int value) override;
    int stepAttenuatorMode() override;
    void setDiscreteAttenuatorMode(int value) override;
    int discreteAttenuatorMode() override;
    void setPowerConstant(int value) override;
    int powerConstant() override;
    void setRfDac(unsigned short value) override;
    unsigned short rfDac() override;
    void setSplitDac(unsigned short value) override;
    unsigned short splitDac() override;
    void setSplitDds(unsigned short value) override;
    unsigned short splitDds() override;
    void setAttenuationDb(double attenuation) override;
    double attenuationDb() override;
    void setAttenuationStep(unsigned short value) override;
    unsigned short attenuationStep() override;
    void enableDiscreteAttenuator(bool enabled) override;
    bool discreteAttenuatorEnabled() override;
    void setSquarePatternStep(double value) override;
    double squarePatternStep() override;
    void setDdsCorrectionMode(int value) override;
    int ddsCorrectionMode() override;
    void enableDdsCorrection(bool enabled) override;
    bool ddsCorrectionEnabled() override;
    void assignPowerCalibrationTable(std::vector<unsigned char> table) override;

private:
    const std::shared_ptr<ModuleState> m_state;
};

} // namespace tov::simulator

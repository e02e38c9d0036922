#pragma once

#include "sdk/service/iulkpowercontrol.h"
#include "simulator/support/modulestate.h"

#include <memory>

namespace tov::simulator {

/// The Ulk power control as the simulated instrument offers it. Power codes go from 0 to 63 and attenuation steps from
/// 0 to 31, and beyond them the nearest is taken; other modes and gains than it has are refused.
class SimulatedUlkPowerControl final : public sdk::service::IUlkPowerControl
{
public:
    /// The state of such a module as it comes from the factory.
    static std::shared_ptr<ModuleState> makeState();

    explicit SimulatedUlkPowerControl(std::shared_ptr<ModuleState> state);

    unsigned char loPower() override;
    unsigned char rfPower() override;
    void setLoPower(unsigned char code) override;
    void setRfPower(unsigned char code) override;
    unsigned char minPowerCode() override;
    unsigned char maxPowerCode() override;
    void setSyntPowerMode(int value) override;
    int syntPowerMode() override;
    void setAttenuationMode(int value) override;
    int attenuationMode() override;
    void setAttenuationStep(int value) override;
    int attenuationStep() override;
    void setStepAttenuatorMode(int value) override;
    int stepAttenuatorMode() override;
    int defaultAttenuationStep() override;
    void enableDiscreteAttenuator(bool enabled) override;
    bool discreteAttenuatorEnabled() override;
    void setDiscreteAttenuatorMode(int value) override;
    int discreteAttenuatorMode() override;
    void setCommonAttenuationMode(int value) override;
    int commonAttenuationMode() override;
    void setCommonAttenuationStep(int value) override;
    int commonAttenuationStep() override;
    void setAmpTPort2(unsigned char value) override;
    unsigned char ampTPort2() override;
    void setAmpRPort1(unsigned char value) override;
    unsigned char ampRPort1() override;
    void setAmpTPort1(unsigned char value) override;
    unsigned char ampTPort1() override;
    void setRfPowerCodes(const std::vector<unsigned char>& codes) override;
    void setLoPowerCodes(const std::vector<unsigned char>& codes) override;
    void reset() override;

private:
    const std::shared_ptr<ModuleState> m_state;
};

} // namespace tov::simulator

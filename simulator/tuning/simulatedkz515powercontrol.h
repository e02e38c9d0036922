#pragma once

#include "sdk/service/ikz515powercontrol.h"
#include "simulator/support/modulestate.h"

#include <memory>

namespace tov::simulator {

/// The Kz515 power control as the simulated instrument offers it. Beyond 100 for powers and 4095 for DAC words the
/// nearest is taken; other modes and gains than it has are refused. The union word is that of both DACs.
class SimulatedKz515PowerControl final : public sdk::service::IKZ515PowerControl
{
public:
    /// The state of such a module as it comes from the factory.
    static std::shared_ptr<ModuleState> makeState();

    explicit SimulatedKz515PowerControl(std::shared_ptr<ModuleState> state);

    unsigned char maxPowerValue() override;
    ControlMode powerControlMode() override;
    void setPowerControlMode(ControlMode mode) override;
    unsigned char loPower() override;
    void setLoPower(unsigned char value) override;
    unsigned char rfPower() override;
    void setRfPower(unsigned char value) override;
    unsigned short maxDacValue() override;
    ControlMode dacControlMode() override;
    void setDacControlMode(ControlMode mode) override;
    int dacMode() override;
    void setDacMode(int value) override;
    unsigned short unionDac() override;
    void setUnionDac(unsigned short word) override;
    unsigned short dacA() override;
    void setDacA(unsigned short value) override;
    unsigned short dacB() override;
    void setDacB(unsigned short value) override;
    std::vector<unsigned char> availableGains() override;
    unsigned char referenceGain() override;
    void setReferenceGain(unsigned char gain) override;
    unsigned char signalGain() override;
    void setSignalGain(unsigned char gain) override;
    void assignReceiverCorrectionTable(std::vector<unsigned char> table) override;
    void assignPowerCalibrationTable(std::vector<unsigned char> table) override;

private:
    const std::shared_ptr<ModuleState> m_state;
};

} // namespace tov::simulator

#pragma once

#include "sdk/service/ikz515powercontrol.h"
#include "simulator/support/modulestate.h"

#include <array>
#include <vector>

namespace tov::simulator {

/// The Kz515 power module. Beyond 100 for powers and 4095 for DAC words the nearest is taken; other modes and gains
/// than it has are refused.
class Kz515PowerState final : public ModuleState
{
public:
    static constexpr Operation reading = Operation::Kz515PowerRead;
    static constexpr Operation changing = Operation::Kz515PowerChange;

    using ControlMode = sdk::service::IKZ515PowerControl::ControlMode;

    static constexpr unsigned char mostPower = 100;
    static constexpr unsigned short mostWord = 4095;
    static constexpr std::array<unsigned char, 4> gains = {0, 6, 12, 18};

    Setting<ControlMode> powerControlMode{*this, "powerControlMode", ControlMode::Mode0};
    Setting<unsigned char> loPower{*this, "loPower", 50, nearest(0, mostPower)};
    Setting<unsigned char> rfPower{*this, "rfPower", 50, nearest(0, mostPower)};
    Setting<ControlMode> dacControlMode{*this, "dacControlMode", ControlMode::Mode0};
    Setting<int> dacMode{*this, "dacMode", 0, within(0, 2)};
    Setting<unsigned short> dacA{*this, "dacA", 2048, nearest(0, mostWord)};
    Setting<unsigned short> dacB{*this, "dacB", 2048, nearest(0, mostWord)};
    Setting<unsigned char> referenceGain{*this, "referenceGain", 0, oneOf(gains)};
    Setting<unsigned char> signalGain{*this, "signalGain", 0, oneOf(gains)};
    Table receiverCorrection{*this, "receiverCorrection"};
    Table powerCalibration{*this, "powerCalibration"};
};

/// The Kz515 power control as the simulated instrument offers it. The union word is that of both DACs.
class SimulatedKz515PowerControl final : public ModuleControl<sdk::service::IKZ515PowerControl, Kz515PowerState>
{
public:
    using ModuleControl::ModuleControl;

    unsigned char maxPowerValue() override { return Kz515PowerState::mostPower; }
    ControlMode powerControlMode() override { return read().powerControlMode.value(); }
    void setPowerControlMode(ControlMode mode) override { change().powerControlMode.set(mode); }
    unsigned char loPower() override { return read().loPower.value(); }
    void setLoPower(unsigned char power) override { change().loPower.set(power); }
    unsigned char rfPower() override { return read().rfPower.value(); }
    void setRfPower(unsigned char power) override { change().rfPower.set(power); }
    unsigned short maxDacValue() override { return Kz515PowerState::mostWord; }
    ControlMode dacControlMode() override { return read().dacControlMode.value(); }
    void setDacControlMode(ControlMode mode) override { change().dacControlMode.set(mode); }
    int dacMode() override { return read().dacMode.value(); }
    void setDacMode(int mode) override { change().dacMode.set(mode); }
    unsigned short unionDac() override { return dacA(); }
    void setUnionDac(unsigned short word) override
    {
        setDacA(word);
        setDacB(word);
    }
    unsigned short dacA() override { return read().dacA.value(); }
    void setDacA(unsigned short word) override { change().dacA.set(word); }
    unsigned short dacB() override { return read().dacB.value(); }
    void setDacB(unsigned short word) override { change().dacB.set(word); }
    std::vector<unsigned char> availableGains() override
    {
        return {Kz515PowerState::gains.begin(), Kz515PowerState::gains.end()};
    }
    unsigned char referenceGain() override { return read().referenceGain.value(); }
    void setReferenceGain(unsigned char gain) override { change().referenceGain.set(gain); }
    unsigned char signalGain() override { return read().signalGain.value(); }
    void setSignalGain(unsigned char gain) override { change().signalGain.set(gain); }
    void assignReceiverCorrectionTable(std::vector<unsigned char> table) override
    {
        change().receiverCorrection.load(table);
    }
    void assignPowerCalibrationTable(std::vector<unsigned char> table) override
    {
        change().powerCalibration.load(table);
    }
};

} // namespace tov::simulator

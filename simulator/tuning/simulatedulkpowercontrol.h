#pragma once

#include "sdk/service/iulkpowercontrol.h"
#include "simulator/support/modulestate.h"

#include <vector>

namespace tov::simulator {

/// The Ulk power module. Power codes go from 0 to 63 and attenuation steps from 0 to 31, and beyond them the nearest is
/// taken; other modes and gains than it has are refused.
class UlkPowerState final : public ModuleState
{
public:
    static constexpr Operation reading = Operation::UlkPowerRead;
    static constexpr Operation changing = Operation::UlkPowerChange;

    static constexpr unsigned char leastCode = 0;
    static constexpr unsigned char mostCode = 63;
    static constexpr int defaultStep = 5;

    Setting<unsigned char> loPower{*this, "loPower", 32, nearest(leastCode, mostCode)};
    Setting<unsigned char> rfPower{*this, "rfPower", 32, nearest(leastCode, mostCode)};
    Setting<int> syntPowerMode{*this, "syntPowerMode", 0, within(0, 1)};
    Setting<int> attenuationMode{*this, "attenuationMode", 0, within(0, 1)};
    Setting<int> attenuationStep{*this, "attenuationStep", defaultStep, nearest(0, 31)};
    Setting<int> stepAttenuatorMode{*this, "stepAttenuatorMode", 0, within(0, 3)};
    Setting<bool> discreteAttenuator{*this, "discreteAttenuator", false};
    Setting<int> discreteAttenuatorMode{*this, "discreteAttenuatorMode", 0, within(0, 1)};
    Setting<int> commonAttenuationMode{*this, "commonAttenuationMode", 0, within(0, 1)};
    Setting<int> commonAttenuationStep{*this, "commonAttenuationStep", 0, nearest(0, 31)};
    Setting<unsigned char> ampTPort1{*this, "ampTPort1", 0, within(0, 1)};
    Setting<unsigned char> ampTPort2{*this, "ampTPort2", 0, within(0, 1)};
    Setting<unsigned char> ampRPort1{*this, "ampRPort1", 0, within(0, 1)};
    Table rfPowerCodes{*this, "rfPowerCodes"};
    Table loPowerCodes{*this, "loPowerCodes"};
};

/// The Ulk power control as the simulated instrument offers it.
class SimulatedUlkPowerControl final : public ModuleControl<sdk::service::IUlkPowerControl, UlkPowerState>
{
public:
    using ModuleControl::ModuleControl;

    unsigned char loPower() override { return read().loPower.value(); }
    unsigned char rfPower() override { return read().rfPower.value(); }
    void setLoPower(unsigned char code) override { change().loPower.set(code); }
    void setRfPower(unsigned char code) override { change().rfPower.set(code); }
    unsigned char minPowerCode() override { return UlkPowerState::leastCode; }
    unsigned char maxPowerCode() override { return UlkPowerState::mostCode; }
    void setSyntPowerMode(int mode) override { change().syntPowerMode.set(mode); }
    int syntPowerMode() override { return read().syntPowerMode.value(); }
    void setAttenuationMode(int mode) override { change().attenuationMode.set(mode); }
    int attenuationMode() override { return read().attenuationMode.value(); }
    void setAttenuationStep(int step) override { change().attenuationStep.set(step); }
    int attenuationStep() override { return read().attenuationStep.value(); }
    void setStepAttenuatorMode(int mode) override { change().stepAttenuatorMode.set(mode); }
    int stepAttenuatorMode() override { return read().stepAttenuatorMode.value(); }
    int defaultAttenuationStep() override { return UlkPowerState::defaultStep; }
    void enableDiscreteAttenuator(bool enabled) override { change().discreteAttenuator.set(enabled); }
    bool discreteAttenuatorEnabled() override { return read().discreteAttenuator.value(); }
    void setDiscreteAttenuatorMode(int mode) override { change().discreteAttenuatorMode.set(mode); }
    int discreteAttenuatorMode() override { return read().discreteAttenuatorMode.value(); }
    void setCommonAttenuationMode(int mode) override { change().commonAttenuationMode.set(mode); }
    int commonAttenuationMode() override { return read().commonAttenuationMode.value(); }
    void setCommonAttenuationStep(int step) override { change().commonAttenuationStep.set(step); }
    int commonAttenuationStep() override { return read().commonAttenuationStep.value(); }
    void setAmpTPort2(unsigned char gain) override { change().ampTPort2.set(gain); }
    unsigned char ampTPort2() override { return read().ampTPort2.value(); }
    void setAmpRPort1(unsigned char gain) override { change().ampRPort1.set(gain); }
    unsigned char ampRPort1() override { return read().ampRPort1.value(); }
    void setAmpTPort1(unsigned char gain) override { change().ampTPort1.set(gain); }
    unsigned char ampTPort1() override { return read().ampTPort1.value(); }
    void setRfPowerCodes(const std::vector<unsigned char>& codes) override { change().rfPowerCodes.load(codes); }
    void setLoPowerCodes(const std::vector<unsigned char>& codes) override { change().loPowerCodes.load(codes); }
    void reset() override { change().reset(); }
};

} // namespace tov::simulator

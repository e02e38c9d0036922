#pragma once

#include "sdk/service/iulkpowercontrol.h"
#include "testing/recordingcontrol.h"

namespace tov::testing {

/// A fake of `sdk::service::IUlkPowerControl`.
class FakeUlkPowerControl final : public sdk::service::IUlkPowerControl, public RecordingControl
{
public:
    unsigned char loPower() override { return called<unsigned char>("loPower"); }
    unsigned char rfPower() override { return called<unsigned char>("rfPower"); }
    void setLoPower(unsigned char code) override { called("setLoPower", code); }
    void setRfPower(unsigned char code) override { called("setRfPower", code); }
    unsigned char minPowerCode() override { return called<unsigned char>("minPowerCode"); }
    unsigned char maxPowerCode() override { return called<unsigned char>("maxPowerCode"); }
    void setSyntPowerMode(int mode) override { called("setSyntPowerMode", mode); }
    int syntPowerMode() override { return called<int>("syntPowerMode"); }
    void setAttenuationMode(int mode) override { called("setAttenuationMode", mode); }
    int attenuationMode() override { return called<int>("attenuationMode"); }
    void setAttenuationStep(int step) override { called("setAttenuationStep", step); }
    int attenuationStep() override { return called<int>("attenuationStep"); }
    void setStepAttenuatorMode(int mode) override { called("setStepAttenuatorMode", mode); }
    int stepAttenuatorMode() override { return called<int>("stepAttenuatorMode"); }
    int defaultAttenuationStep() override { return called<int>("defaultAttenuationStep"); }
    void enableDiscreteAttenuator(bool enabled) override { called("enableDiscreteAttenuator", enabled); }
    bool discreteAttenuatorEnabled() override { return called<bool>("discreteAttenuatorEnabled"); }
    void setDiscreteAttenuatorMode(int mode) override { called("setDiscreteAttenuatorMode", mode); }
    int discreteAttenuatorMode() override { return called<int>("discreteAttenuatorMode"); }
    void setCommonAttenuationMode(int mode) override { called("setCommonAttenuationMode", mode); }
    int commonAttenuationMode() override { return called<int>("commonAttenuationMode"); }
    void setCommonAttenuationStep(int step) override { called("setCommonAttenuationStep", step); }
    int commonAttenuationStep() override { return called<int>("commonAttenuationStep"); }
    void setAmpTPort2(unsigned char gain) override { called("setAmpTPort2", gain); }
    unsigned char ampTPort2() override { return called<unsigned char>("ampTPort2"); }
    void setAmpRPort1(unsigned char gain) override { called("setAmpRPort1", gain); }
    unsigned char ampRPort1() override { return called<unsigned char>("ampRPort1"); }
    void setAmpTPort1(unsigned char gain) override { called("setAmpTPort1", gain); }
    unsigned char ampTPort1() override { return called<unsigned char>("ampTPort1"); }
    void setRfPowerCodes(const std::vector<unsigned char>& codes) override { called("setRfPowerCodes", codes); }
    void setLoPowerCodes(const std::vector<unsigned char>& codes) override { called("setLoPowerCodes", codes); }
    void reset() override { called("reset"); }
};

} // namespace tov::testing

#pragma once

#include "sdk/service/iwn0807powermodulecontrol.h"
#include "testing/recordingcontrol.h"

namespace tov::testing {

/// A fake of `sdk::service::IWn0807PowerModuleControl`.
class FakeWn0807PowerModuleControl final : public sdk::service::IWn0807PowerModuleControl, public RecordingControl
{
public:
    void setDacMode(int mode) override { called("setDacMode", mode); }
    int dacMode() override { return called<int>("dacMode"); }
    void setPowerMode(int mode) override { called("setPowerMode", mode); }
    int powerMode() override { return called<int>("powerMode"); }
    void setStepAttenuatorMode(int mode) override { called("setStepAttenuatorMode", mode); }
    int stepAttenuatorMode() override { return called<int>("stepAttenuatorMode"); }
    void setDiscreteAttenuatorMode(int mode) override { called("setDiscreteAttenuatorMode", mode); }
    int discreteAttenuatorMode() override { return called<int>("discreteAttenuatorMode"); }
    void setPowerConstant(int constant) override { called("setPowerConstant", constant); }
    int powerConstant() override { return called<int>("powerConstant"); }
    void setRfDac(unsigned short word) override { called("setRfDac", word); }
    unsigned short rfDac() override { return called<unsigned short>("rfDac"); }
    void setSplitDac(unsigned short word) override { called("setSplitDac", word); }
    unsigned short splitDac() override { return called<unsigned short>("splitDac"); }
    void setSplitDds(unsigned short word) override { called("setSplitDds", word); }
    unsigned short splitDds() override { return called<unsigned short>("splitDds"); }
    void setAttenuationDb(double attenuation) override { called("setAttenuationDb", attenuation); }
    double attenuationDb() override { return called<double>("attenuationDb"); }
    void setAttenuationStep(unsigned short step) override { called("setAttenuationStep", step); }
    unsigned short attenuationStep() override { return called<unsigned short>("attenuationStep"); }
    void enableDiscreteAttenuator(bool enabled) override { called("enableDiscreteAttenuator", enabled); }
    bool discreteAttenuatorEnabled() override { return called<bool>("discreteAttenuatorEnabled"); }
    void setSquarePatternStep(double step) override { called("setSquarePatternStep", step); }
    double squarePatternStep() override { return called<double>("squarePatternStep"); }
    void setDdsCorrectionMode(int mode) override { called("setDdsCorrectionMode", mode); }
    int ddsCorrectionMode() override { return called<int>("ddsCorrectionMode"); }
    void enableDdsCorrection(bool enabled) override { called("enableDdsCorrection", enabled); }
    bool ddsCorrectionEnabled() override { return called<bool>("ddsCorrectionEnabled"); }
    void assignPowerCalibrationTable(std::vector<unsigned char> table) override
    {
        called("assignPowerCalibrationTable", table);
    }
};

} // namespace tov::testing

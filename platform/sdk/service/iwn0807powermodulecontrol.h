#pragma once

#include <vector>

namespace sdk::service {

/// Power settings of the Wn0807 module. Modes are numbers of the module's own, words are raw.
///
/// Thread: *any thread*.
class IWn0807PowerModuleControl
{
public:
    virtual ~IWn0807PowerModuleControl() = default;

    virtual void reserved1() {}

    virtual void setDacMode(int mode) = 0;
    virtual int dacMode() = 0;
    virtual void setPowerMode(int mode) = 0;
    virtual int powerMode() = 0;
    virtual void setStepAttenuatorMode(int mode) = 0;
    virtual int stepAttenuatorMode() = 0;
    virtual void setDiscreteAttenuatorMode(int mode) = 0;
    virtual int discreteAttenuatorMode() = 0;
    virtual void setPowerConstant(int constant) = 0;
    virtual int powerConstant() = 0;
    virtual void setRfDac(unsigned short word) = 0;
    virtual unsigned short rfDac() = 0;
    virtual void setSplitDac(unsigned short word) = 0;
    virtual unsigned short splitDac() = 0;
    virtual void setSplitDds(unsigned short word) = 0;
    virtual unsigned short splitDds() = 0;
    virtual void setAttenuationDb(double attenuation) = 0;
    virtual double attenuationDb() = 0;
    virtual void setAttenuationStep(unsigned short step) = 0;
    virtual unsigned short attenuationStep() = 0;
    virtual void enableDiscreteAttenuator(bool enabled) = 0;
    virtual bool discreteAttenuatorEnabled() = 0;
    virtual void setSquarePatternStep(double step) = 0;
    virtual double squarePatternStep() = 0;
    virtual void setDdsCorrectionMode(int mode) = 0;
    virtual int ddsCorrectionMode() = 0;
    virtual void enableDdsCorrection(bool enabled) = 0;
    virtual bool ddsCorrectionEnabled() = 0;
    virtual void assignPowerCalibrationTable(std::vector<unsigned char> table) = 0;
};

} // namespace sdk::service

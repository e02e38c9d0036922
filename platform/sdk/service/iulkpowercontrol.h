#pragma once

#include <vector>

namespace sdk::service {

/// Power settings of the Ulk module. Powers are codes, modes and gains numbers of the module's own.
///
/// Thread: *any thread*.
class IUlkPowerControl
{
public:
    virtual ~IUlkPowerControl() = default;

    virtual void reserved1() {}

    virtual unsigned char loPower() = 0;
    virtual unsigned char rfPower() = 0;
    virtual void setLoPower(unsigned char code) = 0;
    virtual void setRfPower(unsigned char code) = 0;
    virtual unsigned char minPowerCode() = 0;
    virtual unsigned char maxPowerCode() = 0;
    virtual void setSyntPowerMode(int mode) = 0;
    virtual int syntPowerMode() = 0;
    virtual void setAttenuationMode(int mode) = 0;
    virtual int attenuationMode() = 0;
    virtual void setAttenuationStep(int step) = 0;
    virtual int attenuationStep() = 0;
    virtual void setStepAttenuatorMode(int mode) = 0;
    virtual int stepAttenuatorMode() = 0;
    virtual int defaultAttenuationStep() = 0;
    virtual void enableDiscreteAttenuator(bool enabled) = 0;
    virtual bool discreteAttenuatorEnabled() = 0;
    virtual void setDiscreteAttenuatorMode(int mode) = 0;
    virtual int discreteAttenuatorMode() = 0;
    virtual void setCommonAttenuationMode(int mode) = 0;
    virtual int commonAttenuationMode() = 0;
    virtual void setCommonAttenuationStep(int step) = 0;
    virtual int commonAttenuationStep() = 0;
    virtual void setAmpTPort2(unsigned char gain) = 0;
    virtual unsigned char ampTPort2() = 0;
    virtual void setAmpRPort1(unsigned char gain) = 0;
    virtual unsigned char ampRPort1() = 0;
    virtual void setAmpTPort1(unsigned char gain) = 0;
    virtual unsigned char ampTPort1() = 0;
    virtual void setRfPowerCodes(const std::vector<unsigned char>& codes) = 0;
    virtual void setLoPowerCodes(const std::vector<unsigned char>& codes) = 0;
    virtual void reset() = 0;
};

} // namespace sdk::service

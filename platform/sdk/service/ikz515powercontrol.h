#pragma once

#include <vector>

namespace sdk::service {

/// Power chain of the Kz515 module: power levels, DAC words and gains.
///
/// Thread: *any thread*.
class IKZ515PowerControl
{
public:
    /// Who sets the powers or the DACs.
    enum class ControlMode : int { Mode0 = 0, Mode1 = 1 };

    virtual ~IKZ515PowerControl() = default;

    virtual void reserved1() {}

    virtual unsigned char maxPowerValue() = 0;
    virtual ControlMode powerControlMode() = 0;
    virtual void setPowerControlMode(ControlMode mode) = 0;
    virtual unsigned char loPower() = 0;
    virtual void setLoPower(unsigned char power) = 0;
    virtual unsigned char rfPower() = 0;
    virtual void setRfPower(unsigned char power) = 0;
    virtual unsigned short maxDacValue() = 0;
    virtual ControlMode dacControlMode() = 0;
    virtual void setDacControlMode(ControlMode mode) = 0;

    /// 1 when the two DACs act as one.
    virtual int dacMode() = 0;
    virtual void setDacMode(int mode) = 0;

    /// The word of both DACs while they act as one.
    virtual unsigned short unionDac() = 0;
    virtual void setUnionDac(unsigned short word) = 0;
    virtual unsigned short dacA() = 0;
    virtual void setDacA(unsigned short word) = 0;
    virtual unsigned short dacB() = 0;
    virtual void setDacB(unsigned short word) = 0;
    virtual std::vector<unsigned char> availableGains() = 0;
    virtual unsigned char referenceGain() = 0;
    virtual void setReferenceGain(unsigned char gain) = 0;
    virtual unsigned char signalGain() = 0;
    virtual void setSignalGain(unsigned char gain) = 0;
    virtual void assignReceiverCorrectionTable(std::vector<unsigned char> table) = 0;
    virtual void assignPowerCalibrationTable(std::vector<unsigned char> table) = 0;
};

} // namespace sdk::service

#pragma once

#include <vector>

namespace sdk::service {

/// Power chain of the Kz515 module: power levels, DAC words and gains, in the module's own codes. Levels,
/// words, gains and control modes come unchecked.
///
/// Thread: *any thread*.
class IKZ515PowerControl
{
public:
    /// Modes in which the powers or the DACs are controlled, by the module's numbers. This library does not know what
    /// they mean and passes on others too.
    enum class ControlMode : int {
        Mode0 = 0, ///< the module's 0
        Mode1 = 1  ///< the module's 1
    };

    virtual ~IKZ515PowerControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// The largest power level.
    virtual unsigned char maxPowerValue() = 0;

    /// Mode in which the powers are controlled.
    virtual ControlMode powerControlMode() = 0;
    /// Sets the mode in which the powers are controlled.
    virtual void setPowerControlMode(ControlMode mode) = 0;

    /// Power level of the LO.
    virtual unsigned char loPower() = 0;
    /// Sets the power level of the LO.
    virtual void setLoPower(unsigned char power) = 0;

    /// RF power level.
    virtual unsigned char rfPower() = 0;
    /// Sets the RF power level.
    virtual void setRfPower(unsigned char power) = 0;

    /// The largest DAC word.
    virtual unsigned short maxDacValue() = 0;

    /// Mode in which the DACs are controlled.
    virtual ControlMode dacControlMode() = 0;
    /// Sets the mode in which the DACs are controlled.
    virtual void setDacControlMode(ControlMode mode) = 0;

    /// 1 when the two DACs act as one; this library does not tell other numbers apart.
    virtual int dacMode() = 0;
    /// Makes the two DACs act as one by 1 and ends that by 0; this library sends no other number.
    virtual void setDacMode(int mode) = 0;

    /// The word of both DACs while they act as one.
    virtual unsigned short unionDac() = 0;
    /// Sets the word of both DACs for when they act as one.
    virtual void setUnionDac(unsigned short word) = 0;

    /// The word of DAC A.
    virtual unsigned short dacA() = 0;
    /// Sets the word of DAC A.
    virtual void setDacA(unsigned short word) = 0;

    /// The word of DAC B.
    virtual unsigned short dacB() = 0;
    /// Sets the word of DAC B.
    virtual void setDacB(unsigned short word) = 0;

    /// The gains that the module has.
    virtual std::vector<unsigned char> availableGains() = 0;

    /// Reference gain as the module's code.
    virtual unsigned char referenceGain() = 0;
    /// Sets the reference gain as the module's code.
    virtual void setReferenceGain(unsigned char gain) = 0;

    /// Signal gain as the module's code.
    virtual unsigned char signalGain() = 0;
    /// Sets the signal gain as the module's code.
    virtual void setSignalGain(unsigned char gain) = 0;

    /// Loads the receiver correction table into the module, in the module's own format.
    virtual void assignReceiverCorrectionTable(std::vector<unsigned char> table) = 0;

    /// Loads the power calibration table into the module, in the module's own format.
    virtual void assignPowerCalibrationTable(std::vector<unsigned char> table) = 0;
};

} // namespace sdk::service

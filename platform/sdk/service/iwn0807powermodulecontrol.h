#pragma once

#include <vector>

namespace sdk::service {

/// Power settings of the Wn0807 module. Modes are numbers of the module's own, words are raw.
///
/// This library knows the step attenuator's modes 0 to 4, the DACs' 0 to 3, the discrete attenuator's and the power
/// constants 0 to 2 and, of the power and the DDS correction, the modes 0 and 1. It sends no others and takes any other
/// answer for the largest of them. Words, attenuations, steps and tables come unchecked.
///
/// Thread: *any thread*.
class IWn0807PowerModuleControl
{
public:
    virtual ~IWn0807PowerModuleControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// Sets the mode of the DACs.
    virtual void setDacMode(int mode) = 0;
    /// Mode of the DACs.
    virtual int dacMode() = 0;

    /// Sets the mode of the power.
    virtual void setPowerMode(int mode) = 0;
    /// Mode of the power.
    virtual int powerMode() = 0;

    /// Sets the mode of the step attenuator.
    virtual void setStepAttenuatorMode(int mode) = 0;
    /// Mode of the step attenuator.
    virtual int stepAttenuatorMode() = 0;

    /// Sets the mode of the discrete attenuator.
    virtual void setDiscreteAttenuatorMode(int mode) = 0;
    /// Mode of the discrete attenuator.
    virtual int discreteAttenuatorMode() = 0;

    /// Selects the power constant.
    virtual void setPowerConstant(int constant) = 0;
    /// The power constant that is in force.
    virtual int powerConstant() = 0;

    /// Sets the word of the RF DAC.
    virtual void setRfDac(unsigned short word) = 0;
    /// Word of the RF DAC.
    virtual unsigned short rfDac() = 0;

    /// Sets the word of the split DAC.
    virtual void setSplitDac(unsigned short word) = 0;
    /// Word of the split DAC.
    virtual unsigned short splitDac() = 0;

    /// Sets the word of the split DDS.
    virtual void setSplitDds(unsigned short word) = 0;
    /// Word of the split DDS.
    virtual unsigned short splitDds() = 0;

    /// Sets the attenuation in dB.
    virtual void setAttenuationDb(double attenuation) = 0;
    /// Attenuation in dB.
    virtual double attenuationDb() = 0;

    /// Sets the attenuation as the module's step number.
    virtual void setAttenuationStep(unsigned short step) = 0;
    /// Attenuation as the module's step number.
    virtual unsigned short attenuationStep() = 0;

    /// Switches the discrete attenuator on or off.
    virtual void enableDiscreteAttenuator(bool enabled) = 0;
    /// Whether the discrete attenuator is on.
    virtual bool discreteAttenuatorEnabled() = 0;

    /// Sets the step of the square pattern, in the instrument's unit.
    virtual void setSquarePatternStep(double step) = 0;
    /// Step of the square pattern, in the instrument's unit.
    virtual double squarePatternStep() = 0;

    /// Sets the mode of the DDS correction.
    virtual void setDdsCorrectionMode(int mode) = 0;
    /// Mode of the DDS correction.
    virtual int ddsCorrectionMode() = 0;

    /// Switches the DDS correction on or off.
    virtual void enableDdsCorrection(bool enabled) = 0;
    /// Whether the DDS correction is on.
    virtual bool ddsCorrectionEnabled() = 0;

    /// Loads the power calibration table into the module, in the module's own format.
    virtual void assignPowerCalibrationTable(std::vector<unsigned char> table) = 0;
};

} // namespace sdk::service

#pragma once

#include <vector>

namespace sdk::service {

/// Power settings of the Ulk module. Powers are codes, modes and gains numbers of the module's own.
///
/// This library knows the modes and gains 0 and 1, and of the step attenuator the modes 0 to 3: it sends no others and
/// takes any other answer for 0. Codes and steps come unchecked. A value counts as set when its setter returns.
///
/// Thread: *any thread*.
class IUlkPowerControl
{
public:
    virtual ~IUlkPowerControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// Power of the LO.
    virtual unsigned char loPower() = 0;
    /// RF power.
    virtual unsigned char rfPower() = 0;

    /// Sets the power of the LO.
    virtual void setLoPower(unsigned char code) = 0;
    /// Sets the RF power.
    virtual void setRfPower(unsigned char code) = 0;

    /// The smallest power code that the module has.
    virtual unsigned char minPowerCode() = 0;
    /// The largest power code that the module has.
    virtual unsigned char maxPowerCode() = 0;

    /// Sets the mode of the synthesiser's power.
    virtual void setSyntPowerMode(int mode) = 0;
    /// Mode of the synthesiser's power.
    virtual int syntPowerMode() = 0;

    /// Sets the mode of the attenuation.
    virtual void setAttenuationMode(int mode) = 0;
    /// Mode of the attenuation.
    virtual int attenuationMode() = 0;

    /// Sets the attenuation as the module's step number.
    virtual void setAttenuationStep(int step) = 0;
    /// Attenuation as the module's step number.
    virtual int attenuationStep() = 0;

    /// Sets the mode of the step attenuator.
    virtual void setStepAttenuatorMode(int mode) = 0;
    /// Mode of the step attenuator.
    virtual int stepAttenuatorMode() = 0;

    /// Default of the attenuation as the module's step number.
    virtual int defaultAttenuationStep() = 0;

    /// Switches the discrete attenuator on or off.
    virtual void enableDiscreteAttenuator(bool enabled) = 0;
    /// Whether the discrete attenuator is on.
    virtual bool discreteAttenuatorEnabled() = 0;

    /// Sets the mode of the discrete attenuator.
    virtual void setDiscreteAttenuatorMode(int mode) = 0;
    /// Mode of the discrete attenuator.
    virtual int discreteAttenuatorMode() = 0;

    /// Sets the mode of the common attenuation.
    virtual void setCommonAttenuationMode(int mode) = 0;
    /// Mode of the common attenuation.
    virtual int commonAttenuationMode() = 0;

    /// Sets the common attenuation as the module's step number.
    virtual void setCommonAttenuationStep(int step) = 0;
    /// Common attenuation as the module's step number.
    virtual int commonAttenuationStep() = 0;

    /// Sets the gain of the T port 2 amplifier.
    virtual void setAmpTPort2(unsigned char gain) = 0;
    /// Gain of the T port 2 amplifier.
    virtual unsigned char ampTPort2() = 0;

    /// Sets the gain of the R port 1 amplifier.
    virtual void setAmpRPort1(unsigned char gain) = 0;
    /// Gain of the R port 1 amplifier.
    virtual unsigned char ampRPort1() = 0;

    /// Sets the gain of the T port 1 amplifier.
    virtual void setAmpTPort1(unsigned char gain) = 0;
    /// Gain of the T port 1 amplifier.
    virtual unsigned char ampTPort1() = 0;

    /// Loads the table of RF power codes into the module; `codes` need not live longer than the call.
    virtual void setRfPowerCodes(const std::vector<unsigned char>& codes) = 0;

    /// Loads the table of LO power codes into the module; `codes` need not live longer than the call.
    virtual void setLoPowerCodes(const std::vector<unsigned char>& codes) = 0;

    /// Resets the settings.
    virtual void reset() = 0;
};

} // namespace sdk::service

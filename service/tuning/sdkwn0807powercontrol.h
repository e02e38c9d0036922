#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/service/iwn0807powermodulecontrol.h"
#include "service/devicesservice_export.h"

#include <vector>

namespace tov::devices::service {

/// Power settings of the Wn0807 module: attenuation, modes, and the raw words of its DACs and its DDS.
///
/// Enumerators stand for the module's numbers, whose meaning this library does not know. Words, attenuations, steps and
/// tables go to the instrument unchecked.
///
/// Nothing is cached: every call goes to the instrument. Copies reach the same SDK control; a moved-from object stays
/// usable, because moving copies. What the SDK throws passes through every operation. While the control is absent,
/// setters do nothing and getters give false, 0, 0.0 or the value 0 of the enumeration, and tables are dropped.
///
/// Thread: *any thread*.
class DEVICESSERVICE_EXPORT SdkWn0807PowerControl
{
public:
    /// Modes of the DACs; any other counts as `Mode3`, read and sent.
    enum class DacMode : int {
        Mode0, ///< the SDK's 0
        Mode1, ///< the SDK's 1
        Mode2, ///< the SDK's 2
        Mode3  ///< the SDK's 3
    };

    /// Modes of the power; any other counts as `Mode1`, read and sent.
    enum class PowerMode : int {
        Mode0, ///< the SDK's 0
        Mode1  ///< the SDK's 1
    };

    /// Modes of the step attenuator. The last two are crossed on purpose; any other number reads as `Mode3` and is sent
    /// as the SDK's 3.
    enum class StepAttenuatorMode : int {
        Mode0, ///< the SDK's 0
        Mode1, ///< the SDK's 1
        Mode2, ///< the SDK's 2
        Mode3, ///< the SDK's 4
        Mode4  ///< the SDK's 3
    };

    /// Modes of the discrete attenuator; any other counts as `Mode2`, read and sent.
    enum class DiscreteAttenuatorMode : int {
        Mode0, ///< the SDK's 0
        Mode1, ///< the SDK's 1
        Mode2  ///< the SDK's 2
    };

    /// Power constants; any other counts as `Constant2`, read and sent.
    enum class PowerConstant : int {
        Constant0, ///< the SDK's 0
        Constant1, ///< the SDK's 1
        Constant2  ///< the SDK's 2
    };

    /// Modes of the DDS correction; any other counts as `Mode1`, read and sent.
    enum class DdsCorrectionMode : int {
        Mode0, ///< the SDK's 0
        Mode1  ///< the SDK's 1
    };

    /// Reaches the SDK's control through `control`.
    explicit SdkWn0807PowerControl(ReacquiringControl<sdk::service::IWn0807PowerModuleControl> control);

    /// Reaches the same SDK control as `other`.
    SdkWn0807PowerControl(const SdkWn0807PowerControl& other);

    /// The same; `other` stays usable.
    SdkWn0807PowerControl(SdkWn0807PowerControl&& other);

    SdkWn0807PowerControl& operator=(const SdkWn0807PowerControl&) = delete;
    SdkWn0807PowerControl& operator=(SdkWn0807PowerControl&&) = delete;
    ~SdkWn0807PowerControl();

    /// Mode of the DACs.
    DacMode dacMode() const;
    /// Sets the mode of the DACs.
    void setDacMode(DacMode mode);

    /// Mode of the power.
    PowerMode powerMode() const;
    /// Sets the mode of the power.
    void setPowerMode(PowerMode mode);

    /// Mode of the step attenuator.
    StepAttenuatorMode stepAttenuatorMode() const;
    /// Sets the mode of the step attenuator.
    void setStepAttenuatorMode(StepAttenuatorMode mode);

    /// Mode of the discrete attenuator.
    DiscreteAttenuatorMode discreteAttenuatorMode() const;
    /// Sets the mode of the discrete attenuator.
    void setDiscreteAttenuatorMode(DiscreteAttenuatorMode mode);

    /// The power constant that is in force.
    PowerConstant powerConstant() const;
    /// Selects the power constant.
    void setPowerConstant(PowerConstant constant);

    /// Raw word of the RF DAC.
    unsigned short rfDac() const;
    /// Sets the raw word of the RF DAC.
    void setRfDac(unsigned short word);

    /// Raw word of the split DAC.
    unsigned short splitDac() const;
    /// Sets the raw word of the split DAC.
    void setSplitDac(unsigned short word);

    /// Raw word of the split DDS.
    unsigned short splitDds() const;
    /// Sets the raw word of the split DDS.
    void setSplitDds(unsigned short word);

    /// Attenuation in dB.
    double attenuationDb() const;
    /// Sets the attenuation in dB.
    void setAttenuationDb(double attenuation);

    /// Attenuation as the module's step number.
    unsigned short attenuationStep() const;
    /// Sets the attenuation as the module's step number.
    void setAttenuationStep(unsigned short step);

    /// Whether the discrete attenuator is on.
    bool discreteAttenuatorEnabled() const;
    /// Switches the discrete attenuator on or off.
    void enableDiscreteAttenuator(bool enabled);

    /// Step of the square pattern, in the SDK's unit, unscaled.
    double squarePatternStep() const;
    /// Sets the step of the square pattern, in the SDK's unit, unscaled.
    void setSquarePatternStep(double step);

    /// Mode of the DDS correction.
    DdsCorrectionMode ddsCorrectionMode() const;
    /// Sets the mode of the DDS correction.
    void setDdsCorrectionMode(DdsCorrectionMode mode);

    /// Whether the DDS correction is on.
    bool ddsCorrectionEnabled() const;
    /// Switches the DDS correction on or off.
    void enableDdsCorrection(bool enabled);

    /// Loads the power calibration table into the module, in the module's own format.
    void assignPowerCalibrationTable(std::vector<unsigned char> table);

private:
    ReacquiringControl<sdk::service::IWn0807PowerModuleControl> m_control;
};

} // namespace tov::devices::service

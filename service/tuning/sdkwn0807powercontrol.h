#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/service/iwn0807powermodulecontrol.h"
#include "service/devicesservice_export.h"

#include <vector>

namespace tov::devices::service {

/// Power settings of the Wn0807 module: attenuation, modes, and the raw words of its DACs and its DDS.
///
/// A number that is none of an enumeration's reads as its last value and is sent as that, but for
/// `StepAttenuatorMode`, where it reads as `Mode3` and is sent as 3.
///
/// Nothing is cached: every call goes to the instrument. Copies reach the same SDK control; a moved-from object stays
/// usable, because moving copies. What the SDK throws passes through every operation. While the control is absent,
/// setters do nothing and getters give false, 0, 0.0 or the value 0 of the enumeration, and tables are dropped.
///
/// Thread: *any thread*.
class DEVICESSERVICE_EXPORT SdkWn0807PowerControl
{
public:
    enum class DacMode : int { Mode0, Mode1, Mode2, Mode3 };
    enum class PowerMode : int { Mode0, Mode1 };
    /// `Mode3` and `Mode4` are the SDK's 4 and 3.
    enum class StepAttenuatorMode : int { Mode0, Mode1, Mode2, Mode3, Mode4 };
    enum class DiscreteAttenuatorMode : int { Mode0, Mode1, Mode2 };
    enum class PowerConstant : int { Constant0, Constant1, Constant2 };
    enum class DdsCorrectionMode : int { Mode0, Mode1 };

    explicit SdkWn0807PowerControl(ReacquiringControl<sdk::service::IWn0807PowerModuleControl> control);
    SdkWn0807PowerControl(const SdkWn0807PowerControl& other);
    SdkWn0807PowerControl(SdkWn0807PowerControl&& other);
    SdkWn0807PowerControl& operator=(const SdkWn0807PowerControl&) = delete;
    SdkWn0807PowerControl& operator=(SdkWn0807PowerControl&&) = delete;
    ~SdkWn0807PowerControl();
    DacMode dacMode() const;
    void setDacMode(DacMode mode);
    PowerMode powerMode() const;
    void setPowerMode(PowerMode mode);
    StepAttenuatorMode stepAttenuatorMode() const;
    void setStepAttenuatorMode(StepAttenuatorMode mode);
    DiscreteAttenuatorMode discreteAttenuatorMode() const;
    void setDiscreteAttenuatorMode(DiscreteAttenuatorMode mode);
    PowerConstant powerConstant() const;
    void setPowerConstant(PowerConstant constant);
    unsigned short rfDac() const;
    void setRfDac(unsigned short word);
    unsigned short splitDac() const;
    void setSplitDac(unsigned short word);
    unsigned short splitDds() const;
    void setSplitDds(unsigned short word);

    /// In dB.
    double attenuationDb() const;
    void setAttenuationDb(double attenuation);
    unsigned short attenuationStep() const;
    void setAttenuationStep(unsigned short step);
    bool discreteAttenuatorEnabled() const;
    void enableDiscreteAttenuator(bool enabled);

    /// In the SDK's unit, unscaled.
    double squarePatternStep() const;
    void setSquarePatternStep(double step);
    DdsCorrectionMode ddsCorrectionMode() const;
    void setDdsCorrectionMode(DdsCorrectionMode mode);
    bool ddsCorrectionEnabled() const;
    void enableDdsCorrection(bool enabled);

    /// Loads a table into the module.
    void assignPowerCalibrationTable(std::vector<unsigned char> table);

private:
    ReacquiringControl<sdk::service::IWn0807PowerModuleControl> m_control;
};

} // namespace tov::devices::service

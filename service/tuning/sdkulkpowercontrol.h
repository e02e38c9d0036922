#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/service/iulkpowercontrol.h"
#include "service/devicesservice_export.h"

#include <QObject>

#include <vector>

namespace tov::devices::service {

/// Power settings of the Ulk module: powers, attenuation and amplifiers. Powers are the module's own codes.
///
/// Every setter but those of the code tables emits its signal when the SDK has returned, whether or not the value is a
/// new one or the module took it; nothing tells of changes that others make. Codes, steps and tables go to the
/// instrument unchecked. Enumerators stand for the module's numbers, whose meaning this library does not know; any
/// other number counts as 0, read and sent.
///
/// Nothing is cached: every call goes to the instrument. What the SDK throws passes through every operation, and
/// nothing is emitted then. While the control is absent, setters and `reset()` do nothing and emit nothing, and getters
/// give 0, false or the value 0 of the enumeration.
///
/// Thread: *any thread*. Signals are emitted in the caller's thread, while the SDK's control is still held.
class DEVICESSERVICE_EXPORT SdkUlkPowerControl : public QObject
{
    Q_OBJECT

public:
    /// Gains of an amplifier.
    enum class AmpGain : int {
        Gain0, ///< the SDK's 0
        Gain1  ///< the SDK's 1
    };

    /// Modes of the synthesiser's power.
    enum class SyntPowerMode : int {
        Mode0, ///< the SDK's 0
        Mode1  ///< the SDK's 1
    };

    /// Modes of the attenuation.
    enum class AttenuationMode : int {
        Mode0, ///< the SDK's 0
        Mode1  ///< the SDK's 1
    };

    /// Modes of the common attenuation.
    enum class CommonAttenuationMode : int {
        Mode0, ///< the SDK's 0
        Mode1  ///< the SDK's 1
    };

    /// Modes of the discrete attenuator.
    enum class DiscreteAttenuatorMode : int {
        Mode0, ///< the SDK's 0
        Mode1  ///< the SDK's 1
    };

    /// Modes of the step attenuator.
    enum class StepAttenuatorMode : int {
        Mode0, ///< the SDK's 0
        Mode1, ///< the SDK's 1
        Mode2, ///< the SDK's 2
        Mode3  ///< the SDK's 3
    };

    /// Reaches the SDK's control through `control`; has no parent.
    explicit SdkUlkPowerControl(ReacquiringControl<sdk::service::IUlkPowerControl> control);

    ~SdkUlkPowerControl() override;

    /// Power of the LO.
    unsigned char loPower() const;
    /// Sets the power of the LO; emits loPowerChanged().
    void setLoPower(unsigned char code);

    /// RF power.
    unsigned char rfPower() const;
    /// Sets the RF power; emits rfPowerChanged().
    void setRfPower(unsigned char code);

    /// The smallest power code that the module has.
    unsigned char minPowerCode() const;
    /// The largest power code that the module has.
    unsigned char maxPowerCode() const;

    /// Mode of the synthesiser's power.
    SyntPowerMode syntPowerMode() const;
    /// Sets the mode of the synthesiser's power; emits syntPowerModeChanged().
    void setSyntPowerMode(SyntPowerMode mode);

    /// Mode of the attenuation.
    AttenuationMode attenuationMode() const;
    /// Sets the mode of the attenuation; emits attenuationModeChanged().
    void setAttenuationMode(AttenuationMode mode);

    /// Attenuation as the module's step number.
    int attenuationStep() const;
    /// Sets the attenuation as the module's step number; emits attenuationStepChanged().
    void setAttenuationStep(int step);

    /// Default of the attenuation as the module's step number.
    int defaultAttenuationStep() const;

    /// Mode of the step attenuator.
    StepAttenuatorMode stepAttenuatorMode() const;
    /// Sets the mode of the step attenuator; emits stepAttenuatorModeChanged().
    void setStepAttenuatorMode(StepAttenuatorMode mode);

    /// Whether the discrete attenuator is on.
    bool discreteAttenuatorEnabled() const;
    /// Switches the discrete attenuator on or off; emits discreteAttenuatorEnabledChanged().
    void enableDiscreteAttenuator(bool enabled);

    /// Mode of the discrete attenuator.
    DiscreteAttenuatorMode discreteAttenuatorMode() const;
    /// Sets the mode of the discrete attenuator; emits discreteAttenuatorModeChanged().
    void setDiscreteAttenuatorMode(DiscreteAttenuatorMode mode);

    /// Mode of the common attenuation.
    CommonAttenuationMode commonAttenuationMode() const;
    /// Sets the mode of the common attenuation; emits commonAttenuationModeChanged().
    void setCommonAttenuationMode(CommonAttenuationMode mode);

    /// Common attenuation as the module's step number.
    int commonAttenuationStep() const;
    /// Sets the common attenuation as the module's step number; emits commonAttenuationStepChanged().
    void setCommonAttenuationStep(int step);

    /// Gain of the T port 1 amplifier.
    AmpGain ampTPort1() const;
    /// Sets the gain of the T port 1 amplifier; emits ampTPort1Changed().
    void setAmpTPort1(AmpGain gain);

    /// Gain of the T port 2 amplifier.
    AmpGain ampTPort2() const;
    /// Sets the gain of the T port 2 amplifier; emits ampTPort2Changed().
    void setAmpTPort2(AmpGain gain);

    /// Gain of the R port 1 amplifier.
    AmpGain ampRPort1() const;
    /// Sets the gain of the R port 1 amplifier; emits ampRPort1Changed().
    void setAmpRPort1(AmpGain gain);

    /// Loads the table of LO power codes into the module; no signal tells of it.
    void setLoPowerCodes(const std::vector<unsigned char>& codes);

    /// Loads the table of RF power codes into the module; no signal tells of it.
    void setRfPowerCodes(const std::vector<unsigned char>& codes);

    /// Resets the settings, to values that the module knows, and emits all signals in the order of their declaration.
    void reset();

Q_SIGNALS:
    /// The power of the LO was set or reset through this object.
    void loPowerChanged();

    /// The RF power was set or reset through this object.
    void rfPowerChanged();

    /// The mode of the synthesiser's power was set or reset through this object.
    void syntPowerModeChanged();

    /// The attenuation step was set or reset through this object.
    void attenuationStepChanged();

    /// The mode of the step attenuator was set or reset through this object.
    void stepAttenuatorModeChanged();

    /// The discrete attenuator was switched on or off, or reset, through this object.
    void discreteAttenuatorEnabledChanged();

    /// The mode of the discrete attenuator was set or reset through this object.
    void discreteAttenuatorModeChanged();

    /// The mode of the attenuation was set or reset through this object.
    void attenuationModeChanged();

    /// The mode of the common attenuation was set or reset through this object.
    void commonAttenuationModeChanged();

    /// The step of the common attenuation was set or reset through this object.
    void commonAttenuationStepChanged();

    /// The gain of the T port 1 amplifier was set or reset through this object.
    void ampTPort1Changed();

    /// The gain of the T port 2 amplifier was set or reset through this object.
    void ampTPort2Changed();

    /// The gain of the R port 1 amplifier was set or reset through this object.
    void ampRPort1Changed();

private:
    template <typename Setter, typename Argument>
    DEVICESSERVICE_NO_EXPORT void change(Setter setter, Argument argument, void (SdkUlkPowerControl::*changed)());

    ReacquiringControl<sdk::service::IUlkPowerControl> m_control;
};

} // namespace tov::devices::service

#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/service/iulkpowercontrol.h"
#include "service/devicesservice_export.h"

#include <QObject>

#include <vector>

namespace tov::devices::service {

/// Power settings of the Ulk module: powers, attenuation and amplifiers. Powers are the module's own codes.
///
/// Every setter emits its signal after the instrument has taken the value, whether or not it is another one; nothing
/// tells of changes that others make. A number that is none of an enumeration's counts as 0, read and sent.
///
/// Nothing is cached: every call goes to the instrument. What the SDK throws passes through every operation, and
/// nothing is emitted then. While the control is absent, setters do nothing and emit nothing, and getters give 0,
/// false or the value 0 of the enumeration.
///
/// Thread: *any thread*. Signals are emitted in the caller's thread, while the SDK's control is still held.
class DEVICESSERVICE_EXPORT SdkUlkPowerControl : public QObject
{
    Q_OBJECT

public:
    enum class AmpGain : int { Gain0, Gain1 };
    enum class SyntPowerMode : int { Mode0, Mode1 };
    enum class AttenuationMode : int { Mode0, Mode1 };
    enum class CommonAttenuationMode : int { Mode0, Mode1 };
    enum class DiscreteAttenuatorMode : int { Mode0, Mode1 };
    enum class StepAttenuatorMode : int { Mode0, Mode1, Mode2, Mode3 };

    explicit SdkUlkPowerControl(ReacquiringControl<sdk::service::IUlkPowerControl> control);
    ~SdkUlkPowerControl() override;

    unsigned char loPower() const;
    void setLoPower(unsigned char code);
    unsigned char rfPower() const;
    void setRfPower(unsigned char code);
    /// The smallest power code.
    unsigned char minPowerCode() const;
    /// The largest power code.
    unsigned char maxPowerCode() const;
    SyntPowerMode syntPowerMode() const;
    void setSyntPowerMode(SyntPowerMode mode);
    AttenuationMode attenuationMode() const;
    void setAttenuationMode(AttenuationMode mode);
    int attenuationStep() const;
    void setAttenuationStep(int step);
    int defaultAttenuationStep() const;
    StepAttenuatorMode stepAttenuatorMode() const;
    void setStepAttenuatorMode(StepAttenuatorMode mode);
    bool discreteAttenuatorEnabled() const;
    void enableDiscreteAttenuator(bool enabled);
    DiscreteAttenuatorMode discreteAttenuatorMode() const;
    void setDiscreteAttenuatorMode(DiscreteAttenuatorMode mode);
    CommonAttenuationMode commonAttenuationMode() const;
    void setCommonAttenuationMode(CommonAttenuationMode mode);
    int commonAttenuationStep() const;
    void setCommonAttenuationStep(int step);
    AmpGain ampTPort1() const;
    void setAmpTPort1(AmpGain gain);
    AmpGain ampTPort2() const;
    void setAmpTPort2(AmpGain gain);
    AmpGain ampRPort1() const;
    void setAmpRPort1(AmpGain gain);

    /// Each loads a table of power codes into the module; no signal tells of it.
    void setLoPowerCodes(const std::vector<unsigned char>& codes);
    void setRfPowerCodes(const std::vector<unsigned char>& codes);

    /// Takes the settings back to what the module starts with, and emits all signals.
    void reset();

signals:
    void loPowerChanged();
    void rfPowerChanged();
    void syntPowerModeChanged();
    void attenuationStepChanged();
    void stepAttenuatorModeChanged();
    void discreteAttenuatorEnabledChanged();
    void discreteAttenuatorModeChanged();
    void attenuationModeChanged();
    void commonAttenuationModeChanged();
    void commonAttenuationStepChanged();
    void ampTPort1Changed();
    void ampTPort2Changed();
    void ampRPort1Changed();

private:
    template <typename Setter, typename Argument>
    DEVICESSERVICE_NO_EXPORT void change(Setter setter, Argument argument, void (SdkUlkPowerControl::*changed)());

    ReacquiringControl<sdk::service::IUlkPowerControl> m_control;
};

} // namespace tov::devices::service

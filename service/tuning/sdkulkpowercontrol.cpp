#include "service/tuning/sdkulkpowercontrol.h"

#include "service/support/callforwarding.h"
#include "service/support/enumerationmap.h"

#include <functional>
#include <utility>

namespace tov::devices::service {

using ISdkControl = sdk::service::IUlkPowerControl;

namespace {

using AmpGain = SdkUlkPowerControl::AmpGain;
using SyntPowerMode = SdkUlkPowerControl::SyntPowerMode;
using AttenuationMode = SdkUlkPowerControl::AttenuationMode;
using CommonAttenuationMode = SdkUlkPowerControl::CommonAttenuationMode;
using DiscreteAttenuatorMode = SdkUlkPowerControl::DiscreteAttenuatorMode;
using StepAttenuatorMode = SdkUlkPowerControl::StepAttenuatorMode;

// Unknown numbers fold into 0, unlike those of other modules: intended.
constexpr auto ampGains = sameNumbers<2>(AmpGain::Gain0);
constexpr auto syntPowerModes = sameNumbers<2>(SyntPowerMode::Mode0);
constexpr auto attenuationModes = sameNumbers<2>(AttenuationMode::Mode0);
constexpr auto commonAttenuationModes = sameNumbers<2>(CommonAttenuationMode::Mode0);
constexpr auto discreteAttenuatorModes = sameNumbers<2>(DiscreteAttenuatorMode::Mode0);
constexpr auto stepAttenuatorModes = sameNumbers<4>(StepAttenuatorMode::Mode0);

} // namespace

SdkUlkPowerControl::SdkUlkPowerControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

SdkUlkPowerControl::~SdkUlkPowerControl() = default;

// Emits while the control is held, so that a receiver reads back from the same one.
template <typename Setter, typename Argument>
void SdkUlkPowerControl::change(Setter setter, Argument argument, void (SdkUlkPowerControl::*changed)())
{
    if (const auto locked = m_control.lock()) {
        std::invoke(setter, *locked, argument);
        emit(this->*changed)();
    }
}

unsigned char SdkUlkPowerControl::loPower() const
{
    return read(m_control, 0, &ISdkControl::loPower);
}

void SdkUlkPowerControl::setLoPower(unsigned char code)
{
    change(&ISdkControl::setLoPower, code, &SdkUlkPowerControl::loPowerChanged);
}

unsigned char SdkUlkPowerControl::rfPower() const
{
    return read(m_control, 0, &ISdkControl::rfPower);
}

void SdkUlkPowerControl::setRfPower(unsigned char code)
{
    change(&ISdkControl::setRfPower, code, &SdkUlkPowerControl::rfPowerChanged);
}

unsigned char SdkUlkPowerControl::minPowerCode() const
{
    return read(m_control, 0, &ISdkControl::minPowerCode);
}

unsigned char SdkUlkPowerControl::maxPowerCode() const
{
    return read(m_control, 0, &ISdkControl::maxPowerCode);
}

SdkUlkPowerControl::SyntPowerMode SdkUlkPowerControl::syntPowerMode() const
{
    return readEnumeration(m_control, syntPowerModes, &ISdkControl::syntPowerMode);
}

void SdkUlkPowerControl::setSyntPowerMode(SyntPowerMode mode)
{
    change(&ISdkControl::setSyntPowerMode, syntPowerModes.toSdk(mode), &SdkUlkPowerControl::syntPowerModeChanged);
}

SdkUlkPowerControl::AttenuationMode SdkUlkPowerControl::attenuationMode() const
{
    return readEnumeration(m_control, attenuationModes, &ISdkControl::attenuationMode);
}

void SdkUlkPowerControl::setAttenuationMode(AttenuationMode mode)
{
    change(&ISdkControl::setAttenuationMode, attenuationModes.toSdk(mode), &SdkUlkPowerControl::attenuationModeChanged);
}

int SdkUlkPowerControl::attenuationStep() const
{
    return read(m_control, 0, &ISdkControl::attenuationStep);
}

void SdkUlkPowerControl::setAttenuationStep(int step)
{
    change(&ISdkControl::setAttenuationStep, step, &SdkUlkPowerControl::attenuationStepChanged);
}

int SdkUlkPowerControl::defaultAttenuationStep() const
{
    return read(m_control, 0, &ISdkControl::defaultAttenuationStep);
}

SdkUlkPowerControl::StepAttenuatorMode SdkUlkPowerControl::stepAttenuatorMode() const
{
    return readEnumeration(m_control, stepAttenuatorModes, &ISdkControl::stepAttenuatorMode);
}

void SdkUlkPowerControl::setStepAttenuatorMode(StepAttenuatorMode mode)
{
    change(&ISdkControl::setStepAttenuatorMode, stepAttenuatorModes.toSdk(mode),
           &SdkUlkPowerControl::stepAttenuatorModeChanged);
}

bool SdkUlkPowerControl::discreteAttenuatorEnabled() const
{
    return read(m_control, false, &ISdkControl::discreteAttenuatorEnabled);
}

void SdkUlkPowerControl::enableDiscreteAttenuator(bool enabled)
{
    change(&ISdkControl::enableDiscreteAttenuator, enabled, &SdkUlkPowerControl::discreteAttenuatorEnabledChanged);
}

SdkUlkPowerControl::DiscreteAttenuatorMode SdkUlkPowerControl::discreteAttenuatorMode() const
{
    return readEnumeration(m_control, discreteAttenuatorModes, &ISdkControl::discreteAttenuatorMode);
}

void SdkUlkPowerControl::setDiscreteAttenuatorMode(DiscreteAttenuatorMode mode)
{
    change(&ISdkControl::setDiscreteAttenuatorMode, discreteAttenuatorModes.toSdk(mode),
           &SdkUlkPowerControl::discreteAttenuatorModeChanged);
}

SdkUlkPowerControl::CommonAttenuationMode SdkUlkPowerControl::commonAttenuationMode() const
{
    return readEnumeration(m_control, commonAttenuationModes, &ISdkControl::commonAttenuationMode);
}

void SdkUlkPowerControl::setCommonAttenuationMode(CommonAttenuationMode mode)
{
    change(&ISdkControl::setCommonAttenuationMode, commonAttenuationModes.toSdk(mode),
           &SdkUlkPowerControl::commonAttenuationModeChanged);
}

int SdkUlkPowerControl::commonAttenuationStep() const
{
    return read(m_control, 0, &ISdkControl::commonAttenuationStep);
}

void SdkUlkPowerControl::setCommonAttenuationStep(int step)
{
    change(&ISdkControl::setCommonAttenuationStep, step, &SdkUlkPowerControl::commonAttenuationStepChanged);
}

SdkUlkPowerControl::AmpGain SdkUlkPowerControl::ampTPort1() const
{
    return readEnumeration(m_control, ampGains, &ISdkControl::ampTPort1);
}

void SdkUlkPowerControl::setAmpTPort1(AmpGain gain)
{
    change(&ISdkControl::setAmpTPort1, static_cast<unsigned char>(ampGains.toSdk(gain)),
           &SdkUlkPowerControl::ampTPort1Changed);
}

SdkUlkPowerControl::AmpGain SdkUlkPowerControl::ampTPort2() const
{
    return readEnumeration(m_control, ampGains, &ISdkControl::ampTPort2);
}

void SdkUlkPowerControl::setAmpTPort2(AmpGain gain)
{
    change(&ISdkControl::setAmpTPort2, static_cast<unsigned char>(ampGains.toSdk(gain)),
           &SdkUlkPowerControl::ampTPort2Changed);
}

SdkUlkPowerControl::AmpGain SdkUlkPowerControl::ampRPort1() const
{
    return readEnumeration(m_control, ampGains, &ISdkControl::ampRPort1);
}

void SdkUlkPowerControl::setAmpRPort1(AmpGain gain)
{
    change(&ISdkControl::setAmpRPort1, static_cast<unsigned char>(ampGains.toSdk(gain)),
           &SdkUlkPowerControl::ampRPort1Changed);
}

void SdkUlkPowerControl::setLoPowerCodes(const std::vector<unsigned char>& codes)
{
    write(m_control, &ISdkControl::setLoPowerCodes, codes);
}

void SdkUlkPowerControl::setRfPowerCodes(const std::vector<unsigned char>& codes)
{
    write(m_control, &ISdkControl::setRfPowerCodes, codes);
}

void SdkUlkPowerControl::reset()
{
    if (const auto locked = m_control.lock()) {
        locked->reset();
        emit loPowerChanged();
        emit rfPowerChanged();
        emit syntPowerModeChanged();
        emit attenuationStepChanged();
        emit stepAttenuatorModeChanged();
        emit discreteAttenuatorEnabledChanged();
        emit discreteAttenuatorModeChanged();
        emit attenuationModeChanged();
        emit commonAttenuationModeChanged();
        emit commonAttenuationStepChanged();
        emit ampTPort1Changed();
        emit ampTPort2Changed();
        emit ampRPort1Changed();
    }
}

} // namespace tov::devices::service

#include "service/tuning/sdkkz515powercontrol.h"

#include "service/support/callforwarding.h"

#include <utility>

namespace tov::devices::service {

using ISdkControl = sdk::service::IKZ515PowerControl;

namespace {

constexpr int unionMode = 1;

} // namespace

SdkKz515PowerControl::SdkKz515PowerControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

SdkKz515PowerControl::SdkKz515PowerControl(const SdkKz515PowerControl& other) = default;

// Copies, so that a moved-from adapter still finds its control.
SdkKz515PowerControl::SdkKz515PowerControl(SdkKz515PowerControl&& other)
    : SdkKz515PowerControl(std::as_const(other))
{
}

SdkKz515PowerControl::~SdkKz515PowerControl() = default;

unsigned char SdkKz515PowerControl::maxPowerValue() const
{
    return read(m_control, 0, &ISdkControl::maxPowerValue);
}

SdkKz515PowerControl::ControlMode SdkKz515PowerControl::powerControlMode() const
{
    return static_cast<ControlMode>(read(m_control, {}, &ISdkControl::powerControlMode));
}

void SdkKz515PowerControl::setPowerControlMode(ControlMode mode)
{
    write(m_control, &ISdkControl::setPowerControlMode, static_cast<ISdkControl::ControlMode>(mode));
}

unsigned char SdkKz515PowerControl::loPower() const
{
    return read(m_control, 0, &ISdkControl::loPower);
}

void SdkKz515PowerControl::setLoPower(unsigned char power)
{
    write(m_control, &ISdkControl::setLoPower, power);
}

unsigned char SdkKz515PowerControl::rfPower() const
{
    return read(m_control, 0, &ISdkControl::rfPower);
}

void SdkKz515PowerControl::setRfPower(unsigned char power)
{
    write(m_control, &ISdkControl::setRfPower, power);
}

unsigned short SdkKz515PowerControl::maxDacValue() const
{
    return read(m_control, 0, &ISdkControl::maxDacValue);
}

SdkKz515PowerControl::ControlMode SdkKz515PowerControl::dacControlMode() const
{
    return static_cast<ControlMode>(read(m_control, {}, &ISdkControl::dacControlMode));
}

void SdkKz515PowerControl::setDacControlMode(ControlMode mode)
{
    write(m_control, &ISdkControl::setDacControlMode, static_cast<ISdkControl::ControlMode>(mode));
}

bool SdkKz515PowerControl::isDacModeUnion() const
{
    return read(m_control, 0, &ISdkControl::dacMode) == unionMode;
}

void SdkKz515PowerControl::setDacModeUnion(bool on)
{
    write(m_control, &ISdkControl::setDacMode, on ? unionMode : 0);
}

unsigned short SdkKz515PowerControl::unionDac() const
{
    return read(m_control, 0, &ISdkControl::unionDac);
}

void SdkKz515PowerControl::setUnionDac(unsigned short word)
{
    write(m_control, &ISdkControl::setUnionDac, word);
}

unsigned short SdkKz515PowerControl::dacA() const
{
    return read(m_control, 0, &ISdkControl::dacA);
}

void SdkKz515PowerControl::setDacA(unsigned short word)
{
    write(m_control, &ISdkControl::setDacA, word);
}

unsigned short SdkKz515PowerControl::dacB() const
{
    return read(m_control, 0, &ISdkControl::dacB);
}

void SdkKz515PowerControl::setDacB(unsigned short word)
{
    write(m_control, &ISdkControl::setDacB, word);
}

std::vector<unsigned char> SdkKz515PowerControl::availableGains() const
{
    return read(m_control, {}, &ISdkControl::availableGains);
}

unsigned char SdkKz515PowerControl::referenceGain() const
{
    return read(m_control, 0, &ISdkControl::referenceGain);
}

void SdkKz515PowerControl::setReferenceGain(unsigned char gain)
{
    write(m_control, &ISdkControl::setReferenceGain, gain);
}

unsigned char SdkKz515PowerControl::signalGain() const
{
    return read(m_control, 0, &ISdkControl::signalGain);
}

void SdkKz515PowerControl::setSignalGain(unsigned char gain)
{
    write(m_control, &ISdkControl::setSignalGain, gain);
}

void SdkKz515PowerControl::assignReceiverCorrectionTable(std::vector<unsigned char> table)
{
    write(m_control, &ISdkControl::assignReceiverCorrectionTable, std::move(table));
}

void SdkKz515PowerControl::assignPowerCalibrationTable(std::vector<unsigned char> table)
{
    write(m_control, &ISdkControl::assignPowerCalibrationTable, std::move(table));
}

} // namespace tov::devices::service

#include "service/memory/sdkpotentiometerscontrol.h"

#include "service/support/blockingbridge.h"
#include "service/support/callforwarding.h"

namespace tov::devices::service {

namespace {

using ISdkControl = sdk::service::IPotentiometersControl;

PotentiometerInfo fromSdk(ISdkControl::PotentiometerInfo potentiometer)
{
    return {std::move(potentiometer.name), potentiometer.word1, potentiometer.word2};
}

} // namespace

SdkPotentiometersControl::SdkPotentiometersControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

SdkPotentiometersControl::SdkPotentiometersControl(const SdkPotentiometersControl& other) = default;

// Copies, so that a moved-from adapter still finds its control.
SdkPotentiometersControl::SdkPotentiometersControl(SdkPotentiometersControl&& other)
    : SdkPotentiometersControl(std::as_const(other))
{
}

SdkPotentiometersControl::~SdkPotentiometersControl() = default;

std::vector<PotentiometerInfo> SdkPotentiometersControl::potentiometers() const
{
    return readConverted(m_control, &ISdkControl::potentiometers, fromSdk);
}

std::expected<int, IPotentiometersControl::Error> SdkPotentiometersControl::readFromEeprom(std::size_t index)
{
    return request<std::expected<int, Error>>(m_control, &ISdkControl::readFromEeprom, index);
}

std::expected<void, IPotentiometersControl::Error> SdkPotentiometersControl::writeToRam(std::size_t index, int value)
{
    return request<std::expected<void, Error>>(m_control, &ISdkControl::writeToRam, index, value);
}

std::expected<void, IPotentiometersControl::Error> SdkPotentiometersControl::writeToEeprom(std::size_t index, int value)
{
    return request<std::expected<void, Error>>(m_control, &ISdkControl::writeToEeprom, index, value);
}

} // namespace tov::devices::service

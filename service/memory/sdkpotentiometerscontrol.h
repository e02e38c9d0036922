#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/service/ipotentiometerscontrol.h"
#include "service/devicesservice_export.h"
#include "service/memory/ipotentiometerscontrol.h"

namespace tov::devices::service {

/// The potentiometers, reached through the SDK. Copies reach the same SDK control.
class DEVICESSERVICE_EXPORT SdkPotentiometersControl : public IPotentiometersControl
{
public:
    /// Reaches the SDK's control through `control`.
    explicit SdkPotentiometersControl(ReacquiringControl<sdk::service::IPotentiometersControl> control);

    /// Reaches the same SDK control as `other`.
    SdkPotentiometersControl(const SdkPotentiometersControl& other);

    /// The same: `other` remains as it is.
    SdkPotentiometersControl(SdkPotentiometersControl&& other);

    SdkPotentiometersControl& operator=(const SdkPotentiometersControl&) = delete;
    SdkPotentiometersControl& operator=(SdkPotentiometersControl&&) = delete;
    ~SdkPotentiometersControl() override;

    std::vector<PotentiometerInfo> potentiometers() const override;
    std::expected<int, Error> readFromEeprom(std::size_t index) override;
    std::expected<void, Error> writeToRam(std::size_t index, int value) override;
    std::expected<void, Error> writeToEeprom(std::size_t index, int value) override;

private:
    ReacquiringControl<sdk::service::IPotentiometersControl> m_control;
};

} // namespace tov::devices::service

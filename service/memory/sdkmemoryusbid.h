#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/service/imemoryusbidcontrol.h"
#include "service/devicesservice_export.h"
#include "service/memory/iusbidcontrol.h"

namespace tov::devices::service {

/// The USB identifier, reached through the SDK. Copies reach the same SDK control; a moved-from object finds no
/// new control once the present one is gone.
class DEVICESSERVICE_EXPORT SdkMemoryUsbId : public IUsbIdControl
{
public:
    /// Reaches the SDK's control through `control`.
    explicit SdkMemoryUsbId(ReacquiringControl<sdk::service::IMemoryUsbIdControl> control);

    UsbId usbId() override;
    std::vector<UsbId> usbIds() override;
    bool writeUsbId(const UsbId& id) override;

private:
    ReacquiringControl<sdk::service::IMemoryUsbIdControl> m_control;
};

} // namespace tov::devices::service

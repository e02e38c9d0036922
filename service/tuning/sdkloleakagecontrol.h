#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/service/iloleakagecontrol.h"
#include "service/devicesservice_export.h"

namespace tov::devices::service {

/// The instrument's LO leakage function.
///
/// Copies reach the same SDK control; a moved-from object stays usable, because moving copies.
/// What the SDK throws passes through every operation.
///
/// Thread: *any thread*.
class DEVICESSERVICE_EXPORT SdkLoLeakageControl
{
public:
    /// Reaches the SDK's control through `control`.
    explicit SdkLoLeakageControl(ReacquiringControl<sdk::service::ILoLeakageControl> control);

    /// Reaches the same SDK control as `other`.
    SdkLoLeakageControl(const SdkLoLeakageControl& other);

    /// The same; `other` stays usable.
    SdkLoLeakageControl(SdkLoLeakageControl&& other);

    SdkLoLeakageControl& operator=(const SdkLoLeakageControl&) = delete;
    SdkLoLeakageControl& operator=(SdkLoLeakageControl&&) = delete;
    ~SdkLoLeakageControl();

    /// Whether the function is on; false when the control is absent.
    bool isEnabled() const;

    /// Switches the function on or off; does nothing when the control is absent.
    void setEnabled(bool enabled);

private:
    ReacquiringControl<sdk::service::ILoLeakageControl> m_control;
};

} // namespace tov::devices::service

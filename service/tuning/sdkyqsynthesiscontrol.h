#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/service/iyqsynthesiscontrol.h"
#include "service/devicesservice_export.h"

#include <vector>

namespace tov::devices::service {

/// Intermediate-frequency (IF) settings of the Yq synthesis module.
///
/// Nothing is cached: every call goes to the instrument. Copies reach the same SDK control; a
/// moved-from object stays usable, because moving copies. What the SDK throws passes through every
/// operation.
///
/// Thread: *any thread*.
class DEVICESSERVICE_EXPORT SdkYqSynthesisControl
{
public:
    /// Reaches the SDK's control through `control`.
    explicit SdkYqSynthesisControl(ReacquiringControl<sdk::service::IYqSynthesisControl> control);

    /// Reaches the same SDK control as `other`.
    SdkYqSynthesisControl(const SdkYqSynthesisControl& other);

    /// The same; `other` stays usable.
    SdkYqSynthesisControl(SdkYqSynthesisControl&& other);

    SdkYqSynthesisControl& operator=(const SdkYqSynthesisControl&) = delete;
    SdkYqSynthesisControl& operator=(SdkYqSynthesisControl&&) = delete;
    ~SdkYqSynthesisControl();

    /// Whether the manually chosen IF is in force; false when the control is absent.
    bool manualIfEnabled() const;

    /// Switches the manually chosen IF on or off; does nothing when the control is absent.
    void enableManualIf(bool enabled);

    /// Index of the selected IF in `supportedIfs()`; -1 when the control is absent, and if the SDK says so.
    int selectedIf() const;

    /// Selects an IF by its index, which goes to the instrument unchecked; does nothing when the
    /// control is absent.
    void setSelectedIf(int index);

    /// A copy of the IFs that the module supports, in the SDK's unit, unscaled; empty when the
    /// control is absent. Throws `std::bad_alloc` or `std::length_error` when the copy cannot be made.
    std::vector<double> supportedIfs() const;

private:
    ReacquiringControl<sdk::service::IYqSynthesisControl> m_control;
};

} // namespace tov::devices::service

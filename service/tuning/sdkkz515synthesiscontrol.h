#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/service/ikz515synthesiscontrol.h"
#include "service/devicesservice_export.h"

#include <vector>

namespace tov::devices::service {

/// Reference frequency of the Kz515 module, in the SDK's unit, unscaled.
///
/// Nothing is cached: every call goes to the instrument. Copies reach the same SDK control; a moved-from object stays
/// usable, because moving copies. What the SDK throws passes through every operation. While the control is absent,
/// setters do nothing and getters give 0.0 or an empty list.
///
/// Thread: *any thread*.
class DEVICESSERVICE_EXPORT SdkKz515SynthesisControl
{
public:
    /// Reaches the SDK's control through `control`.
    explicit SdkKz515SynthesisControl(ReacquiringControl<sdk::service::IKZ515SynthesisControl> control);

    /// Reaches the same SDK control as `other`.
    SdkKz515SynthesisControl(const SdkKz515SynthesisControl& other);

    /// The same; `other` stays usable.
    SdkKz515SynthesisControl(SdkKz515SynthesisControl&& other);

    SdkKz515SynthesisControl& operator=(const SdkKz515SynthesisControl&) = delete;
    SdkKz515SynthesisControl& operator=(SdkKz515SynthesisControl&&) = delete;
    ~SdkKz515SynthesisControl();

    /// The reference frequencies that the module can use, in the SDK's order.
    std::vector<double> availableReferenceFrequencies() const;

    /// The reference frequency that is in force.
    double currentReferenceFrequency() const;

    /// Sets the reference frequency, which goes to the instrument unchecked.
    void setReferenceFrequency(double frequency);

private:
    ReacquiringControl<sdk::service::IKZ515SynthesisControl> m_control;
};

} // namespace tov::devices::service

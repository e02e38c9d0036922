#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/service/iulksynthesiscontrol.h"
#include "service/devicesservice_export.h"

#include <vector>

namespace tov::devices::service {

/// Synthesis settings of the Ulk module: intermediate frequency (IF), reference, filter and LO leakage.
///
/// Nothing is cached: every call goes to the instrument. Copies reach the same SDK control; a moved-from object stays
/// usable, because moving copies. What the SDK throws passes through every operation. While the control is absent,
/// setters and `reset()` do nothing and getters give false, 0, 0.0 or an empty list.
///
/// Thread: *any thread*.
class DEVICESSERVICE_EXPORT SdkUlkSynthesisControl
{
public:
    /// Reaches the SDK's control through `control`.
    explicit SdkUlkSynthesisControl(ReacquiringControl<sdk::service::IUlkSynthesisControl> control);

    /// Reaches the same SDK control as `other`.
    SdkUlkSynthesisControl(const SdkUlkSynthesisControl& other);

    /// The same; `other` stays usable.
    SdkUlkSynthesisControl(SdkUlkSynthesisControl&& other);

    SdkUlkSynthesisControl& operator=(const SdkUlkSynthesisControl&) = delete;
    SdkUlkSynthesisControl& operator=(SdkUlkSynthesisControl&&) = delete;
    ~SdkUlkSynthesisControl();

    /// Whether the LO leakage mode is on.
    bool loLeakageMode() const;

    /// Switches the LO leakage mode on or off.
    void setLoLeakageMode(bool on);

    /// Whether the manually chosen IF is in force.
    bool manualIfEnabled() const;

    /// Switches the manually chosen IF on or off.
    void enableManualIf(bool enabled);

    /// Index of the selected IF in `supportedIfs()`; 0, too, when the control is absent.
    int selectedIf() const;

    /// Selects an IF by its index, which goes to the instrument unchecked.
    void setSelectedIf(int index);

    /// A copy of the IFs that the module supports, in the SDK's unit, unscaled. Throws `std::bad_alloc` or
    /// `std::length_error` when the copy cannot be made.
    std::vector<double> supportedIfs() const;

    /// Frequency of the first filter, in the SDK's unit, unscaled.
    double filter1Frequency() const;

    /// Sets the frequency of the first filter, in the SDK's unit, unscaled and unchecked.
    void setFilter1Frequency(double frequency);

    /// Whether the manually chosen reference is in force.
    bool manualRefEnabled() const;

    /// Switches the manually chosen reference on or off.
    void enableManualRef(bool enabled);

    /// Index of the selected reference in `supportedRefs()`; 0, too, when the control is absent.
    int selectedRef() const;

    /// Selects a reference by its index, which goes to the instrument unchecked.
    void setSelectedRef(int index);

    /// A copy of the references that the module supports, in the SDK's unit, unscaled. Throws `std::bad_alloc` or
    /// `std::length_error` when the copy cannot be made.
    std::vector<double> supportedRefs() const;

    /// Resets the settings, to values that the module knows.
    void reset();

private:
    ReacquiringControl<sdk::service::IUlkSynthesisControl> m_control;
};

} // namespace tov::devices::service

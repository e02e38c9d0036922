#pragma once

#include <span>

namespace sdk::service {

/// Intermediate-frequency (IF) settings of the Yq synthesis module.
///
/// Thread: *any thread*.
class IYqSynthesisControl
{
public:
    virtual ~IYqSynthesisControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// Switches the manually chosen IF on or off.
    virtual void enableManualIf(bool enabled) = 0;

    /// Whether the manually chosen IF is in force.
    virtual bool manualIfEnabled() = 0;

    /// Selects an IF by its index in `supportedIfs()`; the index may be any number.
    virtual void setSelectedIf(int index) = 0;

    /// Index of the selected IF.
    virtual int selectedIf() = 0;

    /// The IFs that the module supports, in the instrument's unit. The view stays valid while the control lives.
    /// The library copies it at once; until then it must not change, also when other threads call.
    virtual std::span<const double> supportedIfs() = 0;
};

} // namespace sdk::service

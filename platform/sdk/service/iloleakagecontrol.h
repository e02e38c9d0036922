#pragma once

namespace sdk::service {

/// Switches the instrument's LO leakage function.
///
/// Thread: *any thread*.
class ILoLeakageControl
{
public:
    virtual ~ILoLeakageControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// Whether the function is on.
    virtual bool isEnabled() = 0;

    /// Switches the function on or off.
    virtual void setEnabled(bool enabled) = 0;
};

} // namespace sdk::service

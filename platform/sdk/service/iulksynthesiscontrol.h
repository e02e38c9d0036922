#pragma once

#include <span>

namespace sdk::service {

/// Synthesis settings of the Ulk module: intermediate frequency (IF), reference, filter and LO leakage.
///
/// Thread: *any thread*.
class IUlkSynthesisControl
{
public:
    virtual ~IUlkSynthesisControl() = default;

    virtual void reserved1() {}

    virtual void setLoLeakageMode(bool on) = 0;
    virtual bool loLeakageMode() = 0;

    /// Switches the manually chosen IF on or off.
    virtual void enableManualIf(bool enabled) = 0;
    virtual bool manualIfEnabled() = 0;

    /// Selects an IF by its index in `supportedIfs()`.
    virtual void setSelectedIf(int index) = 0;
    virtual int selectedIf() = 0;

    /// In the instrument's unit. The view stays valid while the control lives.
    virtual std::span<const double> supportedIfs() = 0;

    /// In the instrument's unit.
    virtual void setFilter1Frequency(double frequency) = 0;
    virtual double filter1Frequency() = 0;

    /// Switches the manually chosen reference on or off.
    virtual void enableManualRef(bool enabled) = 0;
    virtual bool manualRefEnabled() = 0;

    /// Selects a reference by its index in `supportedRefs()`.
    virtual void setSelectedRef(int index) = 0;
    virtual int selectedRef() = 0;

    /// In the instrument's unit. The view stays valid while the control lives.
    virtual std::span<const double> supportedRefs() = 0;

    /// Takes the settings back to what the module starts with.
    virtual void reset() = 0;
};

} // namespace sdk::service

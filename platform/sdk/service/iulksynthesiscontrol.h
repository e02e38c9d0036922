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

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// Switches the LO leakage mode on or off.
    virtual void setLoLeakageMode(bool on) = 0;

    /// Whether the LO leakage mode is on.
    virtual bool loLeakageMode() = 0;

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

    /// Sets the frequency of the first filter, in the instrument's unit.
    virtual void setFilter1Frequency(double frequency) = 0;

    /// Frequency of the first filter, in the instrument's unit.
    virtual double filter1Frequency() = 0;

    /// Switches the manually chosen reference on or off.
    virtual void enableManualRef(bool enabled) = 0;

    /// Whether the manually chosen reference is in force.
    virtual bool manualRefEnabled() = 0;

    /// Selects a reference by its index in `supportedRefs()`; the index may be any number.
    virtual void setSelectedRef(int index) = 0;

    /// Index of the selected reference.
    virtual int selectedRef() = 0;

    /// The references that the module supports, in the instrument's unit. The view stays valid while the control lives.
    /// The library copies it at once; until then it must not change, also when other threads call.
    virtual std::span<const double> supportedRefs() = 0;

    /// Resets the settings.
    virtual void reset() = 0;
};

} // namespace sdk::service

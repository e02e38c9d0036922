#pragma once

#include <chrono>
#include <optional>
#include <span>

namespace sdk::service {

/// Synthesis settings of the Wn0807 module. Powers are codes, modes, capacitors and filters numbers of the module's
/// own; frequencies are in the instrument's unit.
///
/// This library knows the capacitors 0 and 1 with their modes 0 to 3, the RF filters 0 to 3 with their modes 0 to 2,
/// the RF power modes 0 to 2 and, of the IF and the delay, the modes 0 and 1. It sends no others and takes any other
/// answer for the largest of them, but an RF power mode for 1. Powers, rows, indices, frequencies, ranges and delays
/// come unchecked.
///
/// Thread: *any thread*.
class IWn0807SynthesisControl
{
public:
    /// A row of the RF power range table.
    struct PowerSyntEntry
    {
        double frequency = 0.0;  ///< in the instrument's unit
        unsigned char power = 0; ///< the module's own code
    };

    /// Two bounds of a capacitor's range, whose meaning and unit are the instrument's; nothing orders them.
    struct Range
    {
        double first = 0.0;  ///< first bound
        double second = 0.0; ///< second bound
    };

    /// A delay as one number in the instrument's unit, whatever the type says; the library passes it on unscaled.
    using Duration = std::chrono::duration<double>;

    virtual ~IWn0807SynthesisControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// Power of the LO.
    virtual unsigned char loPower() = 0;
    /// RF power.
    virtual unsigned char rfPower() = 0;

    /// Sets the power of the LO.
    virtual void setLoPower(unsigned char power) = 0;
    /// Sets the RF power.
    virtual void setRfPower(unsigned char power) = 0;

    /// Mode of the RF power.
    virtual int rfPowerMode() = 0;
    /// Sets the mode of the RF power.
    virtual void setRfPowerMode(int mode) = 0;

    /// The RF power range table. The view stays valid while the control lives. The library copies it at once; until
    /// then it must not change, also when other threads call.
    virtual std::span<const PowerSyntEntry> rfPowerRangeTable() = 0;

    /// The table with which the module left the factory. The view is as that of `rfPowerRangeTable()`.
    virtual std::span<const PowerSyntEntry> rfPowerDefaultRangeTable() = 0;

    /// Changes the frequency of a row of `rfPowerRangeTable()`; the index may be any number.
    virtual void setRfPowerRangeFrequency(int row, double frequency) = 0;
    /// Changes the power of a row of `rfPowerRangeTable()`; the index may be any number.
    virtual void setRfPowerRangePower(int row, unsigned char power) = 0;

    /// Mode of the IF.
    virtual int ifMode() = 0;
    /// Sets the mode of the IF.
    virtual void setIfMode(int mode) = 0;

    /// Selects an IF by its index in `supportedIfs()`; the index may be any number.
    virtual void setSelectedIf(int index) = 0;
    /// Index of the selected IF.
    virtual int selectedIf() = 0;

    /// The IFs that the module supports. The view is as that of `rfPowerRangeTable()`.
    virtual std::span<const double> supportedIfs() = 0;

    /// Not used by this library; keeps its slot.
    virtual void reserved17() {}
    /// Not used by this library; keeps its slot.
    virtual void reserved18() {}

    /// Sets the mode of `capacitor`.
    virtual void setCapacitanceMode(int capacitor, int mode) = 0;
    /// Sets the range of `capacitor`; `range` need not live longer than the call.
    virtual void setCapacitanceRange(int capacitor, const Range& range) = 0;

    /// Mode of `capacitor`.
    virtual int capacitanceMode(int capacitor) = 0;
    /// Range of `capacitor`, or nothing when it has none.
    virtual std::optional<Range> capacitanceRange(int capacitor) = 0;

    /// Sets the mode of the RF filters.
    virtual void setRfFilterMode(int mode) = 0;
    /// Sets the frequency from which `filter` is used.
    virtual void setRfFilterFrom(int filter, double frequency) = 0;
    /// Selects an RF filter.
    virtual void setSelectedRfFilter(int filter) = 0;

    /// Mode of the RF filters.
    virtual int rfFilterMode() = 0;
    /// The selected RF filter, or nothing when none is selected.
    virtual std::optional<int> selectedRfFilter() = 0;
    /// The frequency from which `filter` is used, or nothing when it has none.
    virtual std::optional<double> rfFilterFrom(int filter) = 0;

    /// Sets the switch frequency of the DDS.
    virtual void setDdsSwitchFreq(double frequency) = 0;
    /// Switch frequency of the DDS.
    virtual double ddsSwitchFreq() = 0;

    /// Mode of the measurement delay.
    virtual int delayMode() = 0;
    /// Sets the mode of the measurement delay.
    virtual void setDelayMode(int mode) = 0;

    /// Measurement delay.
    virtual Duration measureDelay() = 0;
    /// Sets the measurement delay.
    virtual void setMeasureDelay(Duration delay) = 0;
};

} // namespace sdk::service

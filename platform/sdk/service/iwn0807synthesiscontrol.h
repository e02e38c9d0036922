#pragma once

#include <chrono>
#include <optional>
#include <span>

namespace sdk::service {

/// Synthesis settings of the Wn0807 module. Modes, capacitors and filters are numbers of the module's own.
///
/// Thread: *any thread*.
class IWn0807SynthesisControl
{
public:
    /// A row of the RF power range table.
    struct PowerSyntEntry
    {
        double frequency = 0.0;
        unsigned char power = 0;
    };

    struct Range
    {
        double first = 0.0;
        double second = 0.0;
    };

    using Duration = std::chrono::duration<double>;

    virtual ~IWn0807SynthesisControl() = default;

    virtual void reserved1() {}

    virtual unsigned char loPower() = 0;
    virtual unsigned char rfPower() = 0;
    virtual void setLoPower(unsigned char power) = 0;
    virtual void setRfPower(unsigned char power) = 0;
    virtual int rfPowerMode() = 0;
    virtual void setRfPowerMode(int mode) = 0;

    /// The view stays valid while the control lives.
    virtual std::span<const PowerSyntEntry> rfPowerRangeTable() = 0;

    /// As the module left the factory. The view stays valid while the control lives.
    virtual std::span<const PowerSyntEntry> rfPowerDefaultRangeTable() = 0;
    virtual void setRfPowerRangeFrequency(int row, double frequency) = 0;
    virtual void setRfPowerRangePower(int row, unsigned char power) = 0;
    virtual int ifMode() = 0;
    virtual void setIfMode(int mode) = 0;

    /// Selects an IF by its index in `supportedIfs()`.
    virtual void setSelectedIf(int index) = 0;
    virtual int selectedIf() = 0;

    /// In the instrument's unit. The view stays valid while the control lives.
    virtual std::span<const double> supportedIfs() = 0;
    virtual void reserved17() {}
    virtual void reserved18() {}
    virtual void setCapacitanceMode(int capacitor, int mode) = 0;
    virtual void setCapacitanceRange(int capacitor, const Range& range) = 0;
    virtual int capacitanceMode(int capacitor) = 0;
    virtual std::optional<Range> capacitanceRange(int capacitor) = 0;
    virtual void setRfFilterMode(int mode) = 0;

    /// The frequency from which `filter` is used.
    virtual void setRfFilterFrom(int filter, double frequency) = 0;
    virtual void setSelectedRfFilter(int filter) = 0;
    virtual int rfFilterMode() = 0;
    virtual std::optional<int> selectedRfFilter() = 0;

    /// The frequency from which `filter` is used.
    virtual std::optional<double> rfFilterFrom(int filter) = 0;
    virtual void setDdsSwitchFreq(double frequency) = 0;
    virtual double ddsSwitchFreq() = 0;
    virtual int delayMode() = 0;
    virtual void setDelayMode(int mode) = 0;
    virtual Duration measureDelay() = 0;
    virtual void setMeasureDelay(Duration delay) = 0;
};

} // namespace sdk::service

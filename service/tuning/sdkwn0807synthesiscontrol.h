#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/service/iwn0807synthesiscontrol.h"
#include "service/devicesservice_export.h"
#include "utils/range.h"

#include <optional>
#include <vector>

namespace tov::devices::service {

/// Synthesis settings of the Wn0807 module: powers, intermediate frequency (IF), tunable capacitors, RF filters, DDS
/// and measurement delay. Powers are the module's own codes.
///
/// Enumerators stand for the module's numbers, whose meaning this library does not know. Powers, rows,
/// indices, frequencies, ranges and delays go to the instrument unchecked.
///
/// Nothing is cached: every call goes to the instrument. Copies reach the same SDK control; a moved-from object stays
/// usable, because moving copies. What the SDK throws passes through every operation. While the control is absent,
/// setters do nothing and getters give 0, 0.0, the value 0 of the enumeration, an empty list or nothing.
///
/// Thread: *any thread*.
class DEVICESSERVICE_EXPORT SdkWn0807SynthesisControl
{
public:
    /// A row of the RF power range table.
    struct PowerSyntEntry
    {
        double frequency = 0.0;  ///< in the SDK's unit, unscaled
        unsigned char power = 0; ///< the module's own code
    };

    /// The tunable capacitors; any other is sent as `Capacitor2`.
    enum class Capacitor : int {
        Capacitor1, ///< the SDK's 0
        Capacitor2  ///< the SDK's 1
    };

    /// Modes of a tunable capacitor; any other counts as `Mode3`, read and sent.
    enum class CapacitorMode : int {
        Mode0, ///< the SDK's 0
        Mode1, ///< the SDK's 1
        Mode2, ///< the SDK's 2
        Mode3  ///< the SDK's 3
    };

    /// Modes of the RF power; any other counts as the middle one, `Mode1`, read and sent.
    enum class RfPowerMode : int {
        Mode0, ///< the SDK's 0
        Mode1, ///< the SDK's 1
        Mode2  ///< the SDK's 2
    };

    /// Modes of the IF; any other counts as `Mode1`, read and sent.
    enum class IfMode : int {
        Mode0, ///< the SDK's 0
        Mode1  ///< the SDK's 1
    };

    /// Modes of the RF filters; any other counts as `Mode2`, read and sent.
    enum class FilterMode : int {
        Mode0, ///< the SDK's 0
        Mode1, ///< the SDK's 1
        Mode2  ///< the SDK's 2
    };

    /// The RF filters; any other counts as `Filter4`, read and sent.
    enum class RfFilter : int {
        Filter1, ///< the SDK's 0
        Filter2, ///< the SDK's 1
        Filter3, ///< the SDK's 2
        Filter4  ///< the SDK's 3
    };

    /// Modes of the measurement delay; any other counts as `Mode1`, read and sent.
    enum class DelayMode : int {
        Mode0, ///< the SDK's 0
        Mode1  ///< the SDK's 1
    };

    /// Reaches the SDK's control through `control`.
    explicit SdkWn0807SynthesisControl(ReacquiringControl<sdk::service::IWn0807SynthesisControl> control);

    /// Reaches the same SDK control as `other`.
    SdkWn0807SynthesisControl(const SdkWn0807SynthesisControl& other);

    /// The same; `other` stays usable.
    SdkWn0807SynthesisControl(SdkWn0807SynthesisControl&& other);

    SdkWn0807SynthesisControl& operator=(const SdkWn0807SynthesisControl&) = delete;
    SdkWn0807SynthesisControl& operator=(SdkWn0807SynthesisControl&&) = delete;
    ~SdkWn0807SynthesisControl();

    /// Power of the LO.
    unsigned char loPower() const;
    /// Sets the power of the LO.
    void setLoPower(unsigned char power);

    /// RF power.
    unsigned char rfPower() const;
    /// Sets the RF power.
    void setRfPower(unsigned char power);

    /// Mode of the RF power.
    RfPowerMode rfPowerMode() const;
    /// Sets the mode of the RF power.
    void setRfPowerMode(RfPowerMode mode);

    /// A copy of the RF power range table, in the SDK's order of rows. Throws `std::bad_alloc` or `std::length_error`
    /// when the copy cannot be made.
    std::vector<PowerSyntEntry> rfPowerRangeTable() const;

    /// The same for the table with which the module left the factory.
    std::vector<PowerSyntEntry> rfPowerDefaultRangeTable() const;

    /// Changes the frequency of a row, in the SDK's unit, unscaled. The row is its index in `rfPowerRangeTable()`.
    void setRfPowerRangeFrequency(int row, double frequency);

    /// Changes the power of a row, which is its index in `rfPowerRangeTable()`.
    void setRfPowerRangePower(int row, unsigned char power);

    /// Mode of the IF.
    IfMode ifMode() const;
    /// Sets the mode of the IF.
    void setIfMode(IfMode mode);

    /// Index of the selected IF in `supportedIfs()`; 0, too, when the control is absent.
    int selectedIf() const;
    /// Selects an IF by its index.
    void setSelectedIf(int index);

    /// A copy of the IFs that the module supports, in the SDK's unit, unscaled. Throws `std::bad_alloc` or
    /// `std::length_error` when the copy cannot be made.
    std::vector<double> supportedIfs() const;

    /// Mode of `capacitor`.
    CapacitorMode capacitanceMode(Capacitor capacitor) const;
    /// Sets the mode of `capacitor`.
    void setCapacitanceMode(Capacitor capacitor, CapacitorMode mode);

    /// Range of `capacitor`, in the SDK's unit, unscaled; nothing when the capacitor has no range or the control is
    /// absent.
    std::optional<utils::Range<double>> capacitanceRange(Capacitor capacitor) const;
    /// Sets the range of `capacitor`, in the SDK's unit, unscaled.
    void setCapacitanceRange(Capacitor capacitor, const utils::Range<double>& range);

    /// Mode of the RF filters.
    FilterMode rfFilterMode() const;
    /// Sets the mode of the RF filters.
    void setRfFilterMode(FilterMode mode);

    /// The selected RF filter; nothing when none is selected or the control is absent.
    std::optional<RfFilter> selectedRfFilter() const;
    /// Selects an RF filter.
    void setSelectedRfFilter(RfFilter filter);

    /// The frequency from which `filter` is used, in the SDK's unit, unscaled; nothing when it has none or the
    /// control is absent.
    std::optional<double> rfFilterFrom(RfFilter filter) const;
    /// Sets the frequency from which `filter` is used, in the SDK's unit, unscaled.
    void setRfFilterFrom(RfFilter filter, double frequency);

    /// Switch frequency of the DDS, in the SDK's unit, unscaled.
    double ddsSwitchFreq() const;
    /// Sets the switch frequency of the DDS, in the SDK's unit, unscaled.
    void setDdsSwitchFreq(double frequency);

    /// Mode of the measurement delay.
    DelayMode delayMode() const;
    /// Sets the mode of the measurement delay.
    void setDelayMode(DelayMode mode);

    /// Measurement delay, in the SDK's unit, unscaled.
    double measureDelay() const;
    /// Sets the measurement delay, in the SDK's unit, unscaled.
    void setMeasureDelay(double delay);

private:
    ReacquiringControl<sdk::service::IWn0807SynthesisControl> m_control;
};

} // namespace tov::devices::service

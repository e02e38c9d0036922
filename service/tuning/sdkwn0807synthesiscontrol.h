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
/// A number that is none of an enumeration's reads as its last value and is sent as that, but for `RfPowerMode`.
///
/// Nothing is cached: every call goes to the instrument. Copies reach the same SDK control; a moved-from object stays
/// usable, because moving copies. What the SDK throws passes through every operation. While the control is absent,
/// setters do nothing and getters give 0, 0.0, the value 0 of the enumeration, an empty list or nothing.
///
/// Thread: *any thread*.
class DEVICESSERVICE_EXPORT SdkWn0807SynthesisControl
{
public:
    /// A row of the RF power range table: a frequency in the SDK's unit and a power code.
    struct PowerSyntEntry
    {
        double frequency = 0.0;
        unsigned char power = 0;
    };

    enum class Capacitor : int { Capacitor1, Capacitor2 };
    enum class CapacitorMode : int { Mode0, Mode1, Mode2, Mode3 };
    /// Other numbers fold into `Mode1`, in both directions.
    enum class RfPowerMode : int { Mode0, Mode1, Mode2 };
    enum class IfMode : int { Mode0, Mode1 };
    enum class FilterMode : int { Mode0, Mode1, Mode2 };
    enum class RfFilter : int { Filter1, Filter2, Filter3, Filter4 };
    enum class DelayMode : int { Mode0, Mode1 };

    explicit SdkWn0807SynthesisControl(ReacquiringControl<sdk::service::IWn0807SynthesisControl> control);
    SdkWn0807SynthesisControl(const SdkWn0807SynthesisControl& other);
    SdkWn0807SynthesisControl(SdkWn0807SynthesisControl&& other);
    SdkWn0807SynthesisControl& operator=(const SdkWn0807SynthesisControl&) = delete;
    SdkWn0807SynthesisControl& operator=(SdkWn0807SynthesisControl&&) = delete;
    ~SdkWn0807SynthesisControl();
    unsigned char loPower() const;
    void setLoPower(unsigned char power);
    unsigned char rfPower() const;
    void setRfPower(unsigned char power);
    RfPowerMode rfPowerMode() const;
    void setRfPowerMode(RfPowerMode mode);

    /// A copy of the RF power range table.
    std::vector<PowerSyntEntry> rfPowerRangeTable() const;

    /// A copy of the table as the module left the factory.
    std::vector<PowerSyntEntry> rfPowerDefaultRangeTable() const;

    /// Changes a row, whose index goes to the instrument unchecked.
    void setRfPowerRangeFrequency(int row, double frequency);
    void setRfPowerRangePower(int row, unsigned char power);
    IfMode ifMode() const;
    void setIfMode(IfMode mode);

    /// Index of the selected IF in `supportedIfs()`.
    int selectedIf() const;

    /// Selects an IF by its index, which goes to the instrument unchecked.
    void setSelectedIf(int index);

    /// A copy of the IFs that the module supports, in the SDK's unit, unscaled.
    std::vector<double> supportedIfs() const;
    CapacitorMode capacitanceMode(Capacitor capacitor) const;
    void setCapacitanceMode(Capacitor capacitor, CapacitorMode mode);

    /// Nothing when the capacitor has no range or the control is absent.
    std::optional<utils::Range<double>> capacitanceRange(Capacitor capacitor) const;
    void setCapacitanceRange(Capacitor capacitor, const utils::Range<double>& range);
    FilterMode rfFilterMode() const;
    void setRfFilterMode(FilterMode mode);

    /// Nothing when no filter is selected or the control is absent.
    std::optional<RfFilter> selectedRfFilter() const;
    void setSelectedRfFilter(RfFilter filter);

    /// The frequency from which `filter` is used, in the SDK's unit, unscaled; nothing when it has none or the
    /// control is absent.
    std::optional<double> rfFilterFrom(RfFilter filter) const;
    void setRfFilterFrom(RfFilter filter, double frequency);

    /// In the SDK's unit, unscaled.
    double ddsSwitchFreq() const;
    void setDdsSwitchFreq(double frequency);
    DelayMode delayMode() const;
    void setDelayMode(DelayMode mode);

    /// In the SDK's unit, unscaled.
    double measureDelay() const;
    void setMeasureDelay(double delay);

private:
    ReacquiringControl<sdk::service::IWn0807SynthesisControl> m_control;
};

} // namespace tov::devices::service

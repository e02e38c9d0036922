#pragma once

#include "sdk/service/iwn0807synthesiscontrol.h"
#include "testing/recordingcontrol.h"

namespace tov::testing {

/// A fake of `sdk::service::IWn0807SynthesisControl`.
class FakeWn0807SynthesisControl final : public sdk::service::IWn0807SynthesisControl, public RecordingControl
{
public:
    unsigned char loPower() override { return called<unsigned char>("loPower"); }
    unsigned char rfPower() override { return called<unsigned char>("rfPower"); }
    void setLoPower(unsigned char power) override { called("setLoPower", power); }
    void setRfPower(unsigned char power) override { called("setRfPower", power); }
    int rfPowerMode() override { return called<int>("rfPowerMode"); }
    void setRfPowerMode(int mode) override { called("setRfPowerMode", mode); }
    std::span<const PowerSyntEntry> rfPowerRangeTable() override
    {
        return called<std::span<const PowerSyntEntry>>("rfPowerRangeTable");
    }
    std::span<const PowerSyntEntry> rfPowerDefaultRangeTable() override
    {
        return called<std::span<const PowerSyntEntry>>("rfPowerDefaultRangeTable");
    }
    void setRfPowerRangeFrequency(int row, double frequency) override
    {
        called("setRfPowerRangeFrequency", row, frequency);
    }
    void setRfPowerRangePower(int row, unsigned char power) override { called("setRfPowerRangePower", row, power); }
    int ifMode() override { return called<int>("ifMode"); }
    void setIfMode(int mode) override { called("setIfMode", mode); }
    void setSelectedIf(int index) override { called("setSelectedIf", index); }
    int selectedIf() override { return called<int>("selectedIf"); }
    std::span<const double> supportedIfs() override { return called<std::span<const double>>("supportedIfs"); }
    void setCapacitanceMode(int capacitor, int mode) override { called("setCapacitanceMode", capacitor, mode); }
    void setCapacitanceRange(int capacitor, const Range& range) override
    {
        called("setCapacitanceRange", capacitor, range.first, range.second);
    }
    int capacitanceMode(int capacitor) override { return called<int>("capacitanceMode", capacitor); }
    std::optional<Range> capacitanceRange(int capacitor) override
    {
        return called<std::optional<Range>>("capacitanceRange", capacitor);
    }
    void setRfFilterMode(int mode) override { called("setRfFilterMode", mode); }
    void setRfFilterFrom(int filter, double frequency) override { called("setRfFilterFrom", filter, frequency); }
    void setSelectedRfFilter(int filter) override { called("setSelectedRfFilter", filter); }
    int rfFilterMode() override { return called<int>("rfFilterMode"); }
    std::optional<int> selectedRfFilter() override { return called<std::optional<int>>("selectedRfFilter"); }
    std::optional<double> rfFilterFrom(int filter) override
    {
        return called<std::optional<double>>("rfFilterFrom", filter);
    }
    void setDdsSwitchFreq(double frequency) override { called("setDdsSwitchFreq", frequency); }
    double ddsSwitchFreq() override { return called<double>("ddsSwitchFreq"); }
    int delayMode() override { return called<int>("delayMode"); }
    void setDelayMode(int mode) override { called("setDelayMode", mode); }
    Duration measureDelay() override { return called<Duration>("measureDelay"); }
    void setMeasureDelay(Duration delay) override { called("setMeasureDelay", delay.count()); }
};

} // namespace tov::testing

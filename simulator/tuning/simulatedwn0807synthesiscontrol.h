#pragma once

#include "sdk/service/iwn0807synthesiscontrol.h"
#include "simulator/support/modulestate.h"
#include "simulator/support/perthread.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace tov::simulator {

/// The Wn0807 synthesis module, in Hz and seconds. Powers go to 63, the measurement delay to 10 s and capacitances to
/// 100, and beyond them the nearest is taken; modes, rows, indices and frequencies that it does not have are refused.
/// At first no filter is selected, the last filter has no frequency and the second capacitor no range.
class Wn0807SynthesisState final : public ModuleState
{
public:
    static constexpr Operation reading = Operation::Wn0807SynthesisRead;
    static constexpr Operation changing = Operation::Wn0807SynthesisChange;

    using PowerSyntEntry = sdk::service::IWn0807SynthesisControl::PowerSyntEntry;

    static constexpr std::array supportedIfs = {5e6, 10.7e6, 70e6};
    static constexpr std::array<PowerSyntEntry, 5> factoryTable = {
        {{10e6, 20}, {1e9, 24}, {4e9, 30}, {8e9, 38}, {20e9, 50}}};

    Setting<unsigned char> loPower{*this, "loPower", 40, nearest(0, 63)};
    Setting<unsigned char> rfPower{*this, "rfPower", 40, nearest(0, 63)};
    Setting<int> rfPowerMode{*this, "rfPowerMode", 0, within(0, 2)};
    Setting<int> ifMode{*this, "ifMode", 0, within(0, 1)};
    Setting<int> selectedIf{*this, "selectedIf", 0, within(0, supportedIfs.size() - 1.0)};
    Setting<int> rfFilterMode{*this, "rfFilterMode", 0, within(0, 2)};
    Setting<std::optional<int>> selectedRfFilter{*this, "selectedRfFilter", {}, within(0, 3)};
    Setting<double> ddsSwitchFreq{*this, "ddsSwitchFreq", 100e6, nearest(1e6, 1e9)};
    Setting<int> delayMode{*this, "delayMode", 0, within(0, 1)};
    Setting<double> measureDelay{*this, "measureDelay", 0, nearest(0, 10)};
    SettingRow<double> rowFrequency{*this, "rowFrequency", factoryColumn(&PowerSyntEntry::frequency),
                                    within(1e6, 20e9)};
    SettingRow<unsigned char> rowPower{*this, "rowPower", factoryColumn(&PowerSyntEntry::power), nearest(0, 63)};
    SettingRow<int> capacitanceMode{*this, "capacitanceMode", {0, 0}, within(0, 3)};
    SettingRow<std::optional<double>> capacitanceFirst{*this, "capacitanceFirst", {1.0, {}}, nearest(0, 100)};
    SettingRow<std::optional<double>> capacitanceSecond{*this, "capacitanceSecond", {10.0, {}}, nearest(0, 100)};
    SettingRow<std::optional<double>> filterFrom{*this, "filterFrom", {10e6, 1e9, 4e9, {}}, within(1e6, 20e9)};

private:
    template <typename Value>
    static std::vector<Value> factoryColumn(Value PowerSyntEntry::* column)
    {
        std::vector<Value> values;
        std::ranges::transform(factoryTable, std::back_inserter(values), column);
        return values;
    }
};

/// The Wn0807 synthesis control as the simulated instrument offers it.
class SimulatedWn0807SynthesisControl final
    : public ModuleControl<sdk::service::IWn0807SynthesisControl, Wn0807SynthesisState>
{
public:
    using ModuleControl::ModuleControl;

    unsigned char loPower() override { return read().loPower.value(); }
    unsigned char rfPower() override { return read().rfPower.value(); }
    void setLoPower(unsigned char power) override { change().loPower.set(power); }
    void setRfPower(unsigned char power) override { change().rfPower.set(power); }
    int rfPowerMode() override { return read().rfPowerMode.value(); }
    void setRfPowerMode(int mode) override { change().rfPowerMode.set(mode); }

    /// What the calling thread sees does not change before it asks again.
    std::span<const PowerSyntEntry> rfPowerRangeTable() override
    {
        const Wn0807SynthesisState& state = read();
        auto& table = m_handedOut.own();
        table.clear();
        for (int row = 0; std::cmp_less(row, Wn0807SynthesisState::factoryTable.size()); ++row)
            table.push_back({state.rowFrequency.value(row), state.rowPower.value(row)});
        return table;
    }

    std::span<const PowerSyntEntry> rfPowerDefaultRangeTable() override { return Wn0807SynthesisState::factoryTable; }
    void setRfPowerRangeFrequency(int row, double frequency) override { change().rowFrequency.set(row, frequency); }
    void setRfPowerRangePower(int row, unsigned char power) override { change().rowPower.set(row, power); }
    int ifMode() override { return read().ifMode.value(); }
    void setIfMode(int mode) override { change().ifMode.set(mode); }
    void setSelectedIf(int index) override { change().selectedIf.set(index); }
    int selectedIf() override { return read().selectedIf.value(); }
    std::span<const double> supportedIfs() override { return Wn0807SynthesisState::supportedIfs; }
    void setCapacitanceMode(int capacitor, int mode) override { change().capacitanceMode.set(capacitor, mode); }
    void setCapacitanceRange(int capacitor, const Range& range) override
    {
        Wn0807SynthesisState& state = change();
        state.capacitanceFirst.set(capacitor, range.first);
        state.capacitanceSecond.set(capacitor, range.second);
    }
    int capacitanceMode(int capacitor) override { return read().capacitanceMode.value(capacitor); }
    std::optional<Range> capacitanceRange(int capacitor) override
    {
        const Wn0807SynthesisState& state = read();
        const auto first = state.capacitanceFirst.value(capacitor);
        const auto second = state.capacitanceSecond.value(capacitor);
        return first && second ? std::optional(Range{*first, *second}) : std::nullopt;
    }
    void setRfFilterMode(int mode) override { change().rfFilterMode.set(mode); }
    void setRfFilterFrom(int filter, double frequency) override { change().filterFrom.set(filter, frequency); }
    void setSelectedRfFilter(int filter) override { change().selectedRfFilter.set(filter); }
    int rfFilterMode() override { return read().rfFilterMode.value(); }
    std::optional<int> selectedRfFilter() override { return read().selectedRfFilter.value(); }
    std::optional<double> rfFilterFrom(int filter) override { return read().filterFrom.value(filter); }
    void setDdsSwitchFreq(double frequency) override { change().ddsSwitchFreq.set(frequency); }
    double ddsSwitchFreq() override { return read().ddsSwitchFreq.value(); }
    int delayMode() override { return read().delayMode.value(); }
    void setDelayMode(int mode) override { change().delayMode.set(mode); }
    Duration measureDelay() override { return Duration(read().measureDelay.value()); }
    void setMeasureDelay(Duration delay) override { change().measureDelay.set(delay.count()); }

private:
    PerThread<std::vector<PowerSyntEntry>> m_handedOut;
};

} // namespace tov::simulator

#pragma once

#include "sdk/service/iwn0807synthesiscontrol.h"
#include "simulator/support/modulestate.h"
#include "simulator/support/perthread.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace tov::simulator {

/// The Wn0807 synthesis control as the simulated instrument offers it, in Hz and seconds. Powers go to 63, the
/// measurement delay to 10 s and capacitances to 100, and beyond them the nearest is taken; modes, rows, indices and
/// frequencies that it does not have are refused. At first no filter is selected, the last filter has no frequency and
/// the second capacitor no range.
class SimulatedWn0807SynthesisControl final : public sdk::service::IWn0807SynthesisControl
{
public:
    /// The state of such a module as it comes from the factory.
    static std::shared_ptr<ModuleState> makeState();

    explicit SimulatedWn0807SynthesisControl(std::shared_ptr<ModuleState> state);

    unsigned char loPower() override;
    unsigned char rfPower() override;
    void setLoPower(unsigned char power) override;
    void setRfPower(unsigned char power) override;
    int rfPowerMode() override;
    void setRfPowerMode(int mode) override;
    std::span<const PowerSyntEntry> rfPowerRangeTable() override;
    std::span<const PowerSyntEntry> rfPowerDefaultRangeTable() override;
    void setRfPowerRangeFrequency(int row, double frequency) override;
    void setRfPowerRangePower(int row, unsigned char power) override;
    int ifMode() override;
    void setIfMode(int mode) override;
    void setSelectedIf(int index) override;
    int selectedIf() override;
    std::span<const double> supportedIfs() override;
    void setCapacitanceMode(int capacitor, int mode) override;
    void setCapacitanceRange(int capacitor, const Range& range) override;
    int capacitanceMode(int capacitor) override;
    std::optional<Range> capacitanceRange(int capacitor) override;
    void setRfFilterMode(int mode) override;
    void setRfFilterFrom(int filter, double frequency) override;
    void setSelectedRfFilter(int filter) override;
    int rfFilterMode() override;
    std::optional<int> selectedRfFilter() override;
    std::optional<double> rfFilterFrom(int filter) override;
    void setDdsSwitchFreq(double frequency) override;
    double ddsSwitchFreq() override;
    int delayMode() override;
    void setDelayMode(int mode) override;
    Duration measureDelay() override;
    void setMeasureDelay(Duration delay) override;

private:
    const std::shared_ptr<ModuleState> m_state;
    PerThread<std::vector<PowerSyntEntry>> m_handedOut;
};

} // namespace tov::simulator

#pragma once

#include "sdk/service/iulksynthesiscontrol.h"
#include "simulator/support/modulestate.h"

#include <array>
#include <span>

namespace tov::simulator {

/// The Ulk synthesis module, with frequencies in Hz. An index that is not supported is refused; the filter takes the
/// nearest frequency from 10 MHz to 8 GHz.
class UlkSynthesisState final : public ModuleState
{
public:
    static constexpr Operation reading = Operation::UlkSynthesisRead;
    static constexpr Operation changing = Operation::UlkSynthesisChange;

    static constexpr std::array supportedIfs = {2.5e6, 7.5e6, 10.7e6, 21.4e6};
    static constexpr std::array supportedRefs = {5e6, 10e6, 100e6};

    Setting<bool> loLeakageMode{*this, "loLeakageMode", false};
    Setting<bool> manualIf{*this, "manualIf", false};
    Setting<int> selectedIf{*this, "selectedIf", 0, within(0, supportedIfs.size() - 1.0)};
    Setting<double> filter1Frequency{*this, "filter1Frequency", 1e9, nearest(10e6, 8e9)};
    Setting<bool> manualRef{*this, "manualRef", false};
    Setting<int> selectedRef{*this, "selectedRef", 0, within(0, supportedRefs.size() - 1.0)};
};

/// The Ulk synthesis control as the simulated instrument offers it.
class SimulatedUlkSynthesisControl final : public ModuleControl<sdk::service::IUlkSynthesisControl, UlkSynthesisState>
{
public:
    using ModuleControl::ModuleControl;

    void setLoLeakageMode(bool on) override { change().loLeakageMode.set(on); }
    bool loLeakageMode() override { return read().loLeakageMode.value(); }
    void enableManualIf(bool enabled) override { change().manualIf.set(enabled); }
    bool manualIfEnabled() override { return read().manualIf.value(); }
    void setSelectedIf(int index) override { change().selectedIf.set(index); }
    int selectedIf() override { return read().selectedIf.value(); }
    std::span<const double> supportedIfs() override { return UlkSynthesisState::supportedIfs; }
    void setFilter1Frequency(double frequency) override { change().filter1Frequency.set(frequency); }
    double filter1Frequency() override { return read().filter1Frequency.value(); }
    void enableManualRef(bool enabled) override { change().manualRef.set(enabled); }
    bool manualRefEnabled() override { return read().manualRef.value(); }
    void setSelectedRef(int index) override { change().selectedRef.set(index); }
    int selectedRef() override { return read().selectedRef.value(); }
    std::span<const double> supportedRefs() override { return UlkSynthesisState::supportedRefs; }
    void reset() override { change().reset(); }
};

} // namespace tov::simulator

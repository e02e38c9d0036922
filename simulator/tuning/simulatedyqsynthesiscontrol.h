#pragma once

#include "sdk/service/iyqsynthesiscontrol.h"
#include "simulator/support/cborvalues.h"
#include "simulator/support/modulestate.h"

#include <array>
#include <span>

namespace tov::simulator {

/// The Yq synthesis module, in Hz. An IF index that is not supported is refused. A file keeps it without the form of
/// the other modules.
class YqSynthesisState final : public ModuleState
{
public:
    static constexpr Operation reading = Operation::YqSynthesisRead;
    static constexpr Operation changing = Operation::YqSynthesisChange;

    static constexpr std::array supportedIfs = {2.5e6, 5.0e6, 7.5e6, 10.7e6, 21.4e6};

    Setting<bool> manualIf{*this, "manual IF", false};
    Setting<int> selectedIf{*this, "selected IF", 0, within(0, supportedIfs.size() - 1.0)};

    QCborMap save() const override
    {
        return {{manualIf.name(), manualIf.value()}, {selectedIf.name(), selectedIf.value()}};
    }
    void restore(const QCborMap& saved) override
    {
        reset();
        manualIf.set(saved[manualIf.name()].toBool());
        selectedIf.setNumber(static_cast<double>(restoreInteger(saved[selectedIf.name()])));
    }
};

/// The Yq synthesis control as the simulated instrument offers it.
class SimulatedYqSynthesisControl final : public ModuleControl<sdk::service::IYqSynthesisControl, YqSynthesisState>
{
public:
    using ModuleControl::ModuleControl;

    void enableManualIf(bool enabled) override { change().manualIf.set(enabled); }
    bool manualIfEnabled() override { return read().manualIf.value(); }
    void setSelectedIf(int index) override { change().selectedIf.set(index); }
    int selectedIf() override { return read().selectedIf.value(); }
    std::span<const double> supportedIfs() override { return YqSynthesisState::supportedIfs; }
};

} // namespace tov::simulator

#pragma once

#include "sdk/service/iloleakagecontrol.h"
#include "simulator/support/modulestate.h"

namespace tov::simulator {

/// The LO leakage, which a file keeps without the form of the other modules.
class LoLeakageState final : public ModuleState
{
public:
    static constexpr Operation reading = Operation::LoLeakageRead;
    static constexpr Operation changing = Operation::LoLeakageChange;

    Setting<bool> enabled{*this, "enabled", false};

    QCborMap save() const override { return {{enabled.name(), enabled.value()}}; }
    void restore(const QCborMap& saved) override { enabled.set(saved[enabled.name()].toBool()); }
};

/// The LO leakage control as the simulated instrument offers it.
class SimulatedLoLeakageControl final : public ModuleControl<sdk::service::ILoLeakageControl, LoLeakageState>
{
public:
    using ModuleControl::ModuleControl;

    bool isEnabled() override { return read().enabled.value(); }
    void setEnabled(bool enabled) override { change().enabled.set(enabled); }
};

} // namespace tov::simulator

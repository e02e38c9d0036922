#pragma once

#include "sdk/service/iloleakagecontrol.h"
#include "simulator/support/controlstate.h"

#include <atomic>
#include <memory>

namespace tov::simulator {

class LoLeakageState final : public ControlState
{
public:
    std::atomic<bool> enabled = false;

    QCborMap save() const override;
    void restore(const QCborMap& saved) override;
};

/// The LO leakage control as the simulated instrument offers it.
class SimulatedLoLeakageControl final : public sdk::service::ILoLeakageControl
{
public:
    explicit SimulatedLoLeakageControl(std::shared_ptr<LoLeakageState> state);

    bool isEnabled() override;
    void setEnabled(bool enabled) override;

private:
    const std::shared_ptr<LoLeakageState> m_state;
};

} // namespace tov::simulator

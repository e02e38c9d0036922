#pragma once

#include "sdk/service/iloleakagecontrol.h"

#include <atomic>
#include <memory>

namespace tov::simulator {

/// What the instrument remembers of its LO leakage function, whichever control object changes it.
struct LoLeakageState
{
    std::atomic<bool> enabled = false;
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

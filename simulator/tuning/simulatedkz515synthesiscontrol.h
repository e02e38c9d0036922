#pragma once

#include "sdk/service/ikz515synthesiscontrol.h"
#include "simulator/support/modulestate.h"

#include <memory>

namespace tov::simulator {

/// The Kz515 synthesis control as the simulated instrument offers it, in Hz. A reference frequency that is not
/// available is refused.
class SimulatedKz515SynthesisControl final : public sdk::service::IKZ515SynthesisControl
{
public:
    /// The state of such a module as it comes from the factory.
    static std::shared_ptr<ModuleState> makeState();

    explicit SimulatedKz515SynthesisControl(std::shared_ptr<ModuleState> state);

    std::vector<double> availableReferenceFrequencies() override;
    double currentReferenceFrequency() override;
    void setReferenceFrequency(double frequency) override;

private:
    const std::shared_ptr<ModuleState> m_state;
};

} // namespace tov::simulator

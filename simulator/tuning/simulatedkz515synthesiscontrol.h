#pragma once

#include "sdk/service/ikz515synthesiscontrol.h"
#include "simulator/support/modulestate.h"

#include <array>
#include <vector>

namespace tov::simulator {

/// The Kz515 synthesis module, in Hz. A reference frequency that is not available is refused.
class Kz515SynthesisState final : public ModuleState
{
public:
    static constexpr Operation reading = Operation::Kz515SynthesisRead;
    static constexpr Operation changing = Operation::Kz515SynthesisChange;

    static constexpr std::array frequencies = {5e6, 10e6, 100e6};

    Setting<double> referenceFrequency{*this, "referenceFrequency", 10e6, oneOf(frequencies)};
};

/// The Kz515 synthesis control as the simulated instrument offers it.
class SimulatedKz515SynthesisControl final
    : public ModuleControl<sdk::service::IKZ515SynthesisControl, Kz515SynthesisState>
{
public:
    using ModuleControl::ModuleControl;

    std::vector<double> availableReferenceFrequencies() override
    {
        return {Kz515SynthesisState::frequencies.begin(), Kz515SynthesisState::frequencies.end()};
    }
    double currentReferenceFrequency() override { return read().referenceFrequency.value(); }
    void setReferenceFrequency(double frequency) override { change().referenceFrequency.set(frequency); }
};

} // namespace tov::simulator

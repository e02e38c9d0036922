#pragma once

#include "sdk/service/iulksynthesiscontrol.h"
#include "simulator/support/modulestate.h"

#include <memory>
#include <span>

namespace tov::simulator {

/// The Ulk synthesis control as the simulated instrument offers it, with frequencies in Hz. An index that is not
/// supported is refused; the filter takes the nearest frequency from 10 MHz to 8 GHz.
class SimulatedUlkSynthesisControl final : public sdk::service::IUlkSynthesisControl
{
public:
    /// The state of such a module as it comes from the factory.
    static std::shared_ptr<ModuleState> makeState();

    explicit SimulatedUlkSynthesisControl(std::shared_ptr<ModuleState> state);

    void setLoLeakageMode(bool on) override;
    bool loLeakageMode() override;
    void enableManualIf(bool enabled) override;
    bool manualIfEnabled() override;
    void setSelectedIf(int index) override;
    int selectedIf() override;
    std::span<const double> supportedIfs() override;
    void setFilter1Frequency(double frequency) override;
    double filter1Frequency() override;
    void enableManualRef(bool enabled) override;
    bool manualRefEnabled() override;
    void setSelectedRef(int index) override;
    int selectedRef() override;
    std::span<const double> supportedRefs() override;
    void reset() override;

private:
    const std::shared_ptr<ModuleState> m_state;
};

} // namespace tov::simulator

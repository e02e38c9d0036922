#pragma once

#include "sdk/service/iyqsynthesiscontrol.h"
#include "simulator/support/controlstate.h"

#include <array>
#include <atomic>
#include <memory>
#include <span>

namespace tov::simulator {

class YqSynthesisState final : public ControlState
{
public:
    std::atomic<bool> manualIf = false;
    std::atomic<int> selectedIf = 0;

    /// In Hz.
    static constexpr std::array supportedIfs = {2.5e6, 5.0e6, 7.5e6, 10.7e6, 21.4e6};

    QCborMap save() const override;
    void restore(const QCborMap& saved) override;
};

/// The Yq synthesis control as the simulated instrument offers it. An IF index that is not supported is
/// ignored.
class SimulatedYqSynthesisControl final : public sdk::service::IYqSynthesisControl
{
public:
    explicit SimulatedYqSynthesisControl(std::shared_ptr<YqSynthesisState> state);

    void enableManualIf(bool enabled) override;
    bool manualIfEnabled() override;
    void setSelectedIf(int index) override;
    int selectedIf() override;
    std::span<const double> supportedIfs() override;

private:
    const std::shared_ptr<YqSynthesisState> m_state;
};

} // namespace tov::simulator

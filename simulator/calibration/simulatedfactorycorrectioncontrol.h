#pragma once

#include "sdk/ifactorycorrectioncontrol.h"
#include "simulator/support/controlstate.h"
#include "simulator/support/observers.h"

#include <cstdint>
#include <memory>
#include <mutex>

namespace tov::simulator {

/// The factory corrections of the simulated instrument. It supports some that an application does not know, some are
/// not valid and some not modifiable. Who observes them is told of every change on the simulator's thread.
class FactoryCorrectionState final : public ControlState
{
public:
    using IObserver = sdk::IFactoryCorrectionControl::IObserver;

    static constexpr std::uint16_t supported = 0x937F;
    static constexpr std::uint16_t modifiable = 0x917E;

    explicit FactoryCorrectionState(const std::shared_ptr<Machine>& machine);

    /// Of every control object of these corrections.
    const Observers<IObserver> observers;

    std::uint16_t valid() const;
    std::uint16_t enabled() const;

    /// Ignores what is not supported, valid and modifiable.
    void setEnabled(sdk::CorrectionFlag flag, bool enabled);

    /// Makes the data of supported corrections valid or not. What is not valid any more is switched off.
    void setValid(sdk::CorrectionFlag flag, bool valid);

    QCborMap save() const override;
    void restore(const QCborMap& saved) override;

private:
    void tellSwitched(sdk::CorrectionFlag flag, bool enabled);

    mutable std::mutex m_mutex; // guards all below
    std::uint16_t m_valid = 0x133F;
    std::uint16_t m_enabled = 0x0003;
};

/// The factory corrections as the simulated instrument offers them.
class SimulatedFactoryCorrectionControl final
    : public ObservedControl<sdk::IFactoryCorrectionControl, FactoryCorrectionState::IObserver>
{
public:
    SimulatedFactoryCorrectionControl(std::shared_ptr<Machine> machine, std::shared_ptr<FactoryCorrectionState> state);

    std::uint16_t supportedCorrections() override;
    std::uint16_t validCorrections() override;
    std::uint16_t enabledCorrections() override;
    std::uint16_t modifiableCorrections() override;
    void setEnabled(sdk::CorrectionFlag flag, bool enabled) override;

private:
    const std::shared_ptr<Machine> m_machine;
    const std::shared_ptr<FactoryCorrectionState> m_state;
};

} // namespace tov::simulator

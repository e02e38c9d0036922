#pragma once

#include "sdk/ifactorycorrectioncontrol.h"
#include "simulator/support/audience.h"
#include "simulator/support/controlstate.h"

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

    std::uint16_t valid() const;
    std::uint16_t enabled() const;

    /// Ignores what is not supported, valid and modifiable.
    void setEnabled(sdk::CorrectionFlag flag, bool enabled);

    /// Makes the data of supported corrections valid or not. What is not valid any more is switched off.
    void setValid(sdk::CorrectionFlag flag, bool valid);

    /// For a control object of these corrections.
    Audience<IObserver>& audience() noexcept { return m_audience; }

    QCborMap save() const override;
    void restore(const QCborMap& saved) override;

private:
    void tellSwitched(sdk::CorrectionFlag flag, bool enabled);

    Audience<IObserver> m_audience;

    mutable std::mutex m_mutex; // guards all below
    std::uint16_t m_valid = 0x133F;
    std::uint16_t m_enabled = 0x0003;
};

/// The factory corrections as the simulated instrument offers them.
class SimulatedFactoryCorrectionControl final : public sdk::IFactoryCorrectionControl
{
public:
    SimulatedFactoryCorrectionControl(std::shared_ptr<Machine> machine, std::shared_ptr<FactoryCorrectionState> state);
    SimulatedFactoryCorrectionControl(const SimulatedFactoryCorrectionControl&) = delete;
    SimulatedFactoryCorrectionControl& operator=(const SimulatedFactoryCorrectionControl&) = delete;
    ~SimulatedFactoryCorrectionControl() override;

    std::uint16_t supportedCorrections() override;
    std::uint16_t validCorrections() override;
    std::uint16_t enabledCorrections() override;
    std::uint16_t modifiableCorrections() override;
    void setEnabled(sdk::CorrectionFlag flag, bool enabled) override;
    void addObserver(IObserver* observer) override;
    void removeObserver(IObserver* observer) override;

private:
    const std::shared_ptr<Machine> m_machine;
    const std::shared_ptr<FactoryCorrectionState> m_state;
    const std::shared_ptr<ObserverHub<IObserver>> m_observers;
};

} // namespace tov::simulator

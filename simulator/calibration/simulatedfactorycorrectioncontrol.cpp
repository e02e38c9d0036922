#include "simulator/calibration/simulatedfactorycorrectioncontrol.h"

#include "simulator/support/cborvalues.h"

#include <utility>

namespace tov::simulator {

using namespace Qt::StringLiterals;

namespace {

std::uint16_t with(std::uint16_t mask, std::uint16_t bits, bool set)
{
    return static_cast<std::uint16_t>(set ? mask | bits : mask & ~bits);
}

std::uint16_t savedMask(const QCborMap& saved, QLatin1StringView name)
{
    return static_cast<std::uint16_t>(restoreInteger(saved[name])) & FactoryCorrectionState::supported;
}

} // namespace

FactoryCorrectionState::FactoryCorrectionState(const std::shared_ptr<Machine>& machine)
    : observers(machine)
{
}

std::uint16_t FactoryCorrectionState::valid() const
{
    const std::lock_guard guard(m_mutex);
    return m_valid;
}

std::uint16_t FactoryCorrectionState::enabled() const
{
    const std::lock_guard guard(m_mutex);
    return m_enabled;
}

void FactoryCorrectionState::setEnabled(sdk::CorrectionFlag flag, bool enabled)
{
    bool changed = false;
    {
        const std::lock_guard guard(m_mutex);
        const auto bits = static_cast<std::uint16_t>(static_cast<unsigned int>(flag) & modifiable & m_valid);
        const std::uint16_t before = std::exchange(m_enabled, with(m_enabled, bits, enabled));
        changed = before != m_enabled;
    }
    if (changed)
        tellSwitched(flag, enabled);
}

void FactoryCorrectionState::setValid(sdk::CorrectionFlag flag, bool valid)
{
    bool switchedOff = false;
    {
        const std::lock_guard guard(m_mutex);
        const auto bits = static_cast<std::uint16_t>(static_cast<unsigned int>(flag) & supported);
        m_valid = with(m_valid, bits, valid);
        const auto before = std::exchange(m_enabled, static_cast<std::uint16_t>(m_enabled & m_valid));
        switchedOff = before != m_enabled;
    }
    observers.notify(&IObserver::onCorrectionsChanged);
    if (switchedOff)
        tellSwitched(flag, false);
}

void FactoryCorrectionState::tellSwitched(sdk::CorrectionFlag flag, bool enabled)
{
    observers.notify([=](IObserver& observer) { observer.onEnabledChanged(flag, enabled); },
                     &IObserver::onCorrectionStatesChanged);
}

QCborMap FactoryCorrectionState::save() const
{
    const std::lock_guard guard(m_mutex);
    return {{"valid"_L1, m_valid}, {"enabled"_L1, m_enabled}};
}

void FactoryCorrectionState::restore(const QCborMap& saved)
{
    const std::lock_guard guard(m_mutex);
    m_valid = savedMask(saved, "valid"_L1);
    m_enabled = savedMask(saved, "enabled"_L1);
}

SimulatedFactoryCorrectionControl::SimulatedFactoryCorrectionControl(std::shared_ptr<Machine> machine,
                                                                     std::shared_ptr<FactoryCorrectionState> state)
    : ObservedControl(state->observers, Operation::CorrectionsObserve)
    , m_machine(std::move(machine))
    , m_state(std::move(state))
{
}

std::uint16_t SimulatedFactoryCorrectionControl::supportedCorrections()
{
    m_machine->begin(Operation::CorrectionsRead);
    return FactoryCorrectionState::supported;
}

std::uint16_t SimulatedFactoryCorrectionControl::validCorrections()
{
    m_machine->begin(Operation::CorrectionsRead);
    return m_state->valid();
}

std::uint16_t SimulatedFactoryCorrectionControl::enabledCorrections()
{
    m_machine->begin(Operation::CorrectionsRead);
    return m_state->enabled();
}

std::uint16_t SimulatedFactoryCorrectionControl::modifiableCorrections()
{
    m_machine->begin(Operation::CorrectionsRead);
    return FactoryCorrectionState::modifiable;
}

void SimulatedFactoryCorrectionControl::setEnabled(sdk::CorrectionFlag flag, bool enabled)
{
    m_machine->begin(Operation::CorrectionSwitch);
    m_state->setEnabled(flag, enabled);
}

} // namespace tov::simulator

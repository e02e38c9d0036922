#include "host/instrumentsession.h"

#include "service/servicecontrols.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace tov::host {

devices::ControlRegistry registeredControls()
{
    devices::ControlRegistry registry;
    devices::service::servicecontrols::registrate(&registry);
    return registry;
}

InstrumentSession::InstrumentSession(std::shared_ptr<sdk::IVna> instrument)
    : InstrumentSession(std::move(instrument), registeredControls())
{
}

InstrumentSession::InstrumentSession(std::shared_ptr<sdk::IVna> instrument, devices::ControlRegistry registry)
    : m_instrument(std::move(instrument))
    , m_registry(std::move(registry))
{
}

bool InstrumentSession::isPresent(const ControlName& kind) const
{
    return create(kind.keys).has_value();
}

std::any InstrumentSession::create(const devices::ControlKeys& keys) const
{
    return m_registry.create(keys.registry, m_instrument.get());
}

const InstrumentSession::Kept* InstrumentSession::findKept(std::uint64_t key) const
{
    const auto kept = std::ranges::find(m_kept, key, &Kept::key);
    return kept != m_kept.end() ? &*kept : nullptr;
}

void InstrumentSession::tellAboutToBeReleased() const
{
    for (const Kept& kept : m_kept | std::views::reverse)
        if (kept.lifecycle != nullptr)
            kept.lifecycle->onControlsAboutToBeReleased();
}

void InstrumentSession::tellAvailable() const
{
    for (const Kept& kept : m_kept)
        if (kept.lifecycle != nullptr)
            kept.lifecycle->onControlsAvailable();
}

} // namespace tov::host

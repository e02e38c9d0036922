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
    return m_instrument->findControl(kind.keys.sdk) != nullptr;
}

void InstrumentSession::releaseControls(const std::function<void()>& release)
{
    for (auto* observer : lifecycleObservers() | std::views::reverse)
        observer->onControlsAboutToBeReleased();
    release();
}

void InstrumentSession::offerControls(const std::function<void()>& offer)
{
    offer();
    for (auto* observer : lifecycleObservers())
        observer->onControlsAvailable();
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

// A copy, because an adapter that is told may ask the session for another one.
std::vector<devices::IControlLifecycleObserver*> InstrumentSession::lifecycleObservers() const
{
    std::vector<devices::IControlLifecycleObserver*> observers;
    for (const Kept& kept : m_kept)
        if (kept.lifecycle != nullptr)
            observers.push_back(kept.lifecycle);
    return observers;
}

} // namespace tov::host

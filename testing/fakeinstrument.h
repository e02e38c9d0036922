#pragma once

#include "sdk/ivna.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace tov::testing {

/// An instrument that offers what the test gives it and records what it is asked for.
class FakeInstrument : public sdk::IVna
{
public:
    std::shared_ptr<void> findControl(sdk::Key key) override
    {
        if (duringLookup)
            duringLookup();
        const std::lock_guard guard(m_mutex);
        m_lookups.push_back(key);
        const auto found = m_controls.find(key.value);
        return found != m_controls.end() ? found->second : nullptr;
    }

    /// Offers `control` under `key`, instead of what was offered there.
    template <typename SdkIface>
    void offer(sdk::Key key, std::shared_ptr<SdkIface> control)
    {
        std::shared_ptr<void> old = std::move(control);
        const std::lock_guard guard(m_mutex);
        m_controls[key.value].swap(old);
    }

    /// Lets go of what is offered under `key`.
    void release(sdk::Key key) { offer<void>(key, nullptr); }

    /// The keys that were asked for, in order.
    std::vector<sdk::Key> lookups() const
    {
        const std::lock_guard guard(m_mutex);
        return m_lookups;
    }

    /// Runs inside every lookup, before it is recorded; may throw.
    std::function<void()> duringLookup;

private:
    mutable std::mutex m_mutex; // guards all below
    std::map<std::uint64_t, std::shared_ptr<void>> m_controls;
    std::vector<sdk::Key> m_lookups;
};

} // namespace tov::testing

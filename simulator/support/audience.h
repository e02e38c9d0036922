#pragma once

#include "simulator/support/machine.h"
#include "simulator/support/observerhub.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace tov::simulator {

/// Everybody who observes one kind of control, whichever control object they are registered with. What an instrument
/// does by itself is told to all of them.
///
/// Thread: *any thread*.
template <typename Observer>
class Audience
{
public:
    /// The observers of one control object.
    using Hub = ObserverHub<Observer>;

    /// Notifies on the thread of `machine`, which it keeps alive.
    explicit Audience(std::shared_ptr<Machine> machine)
        : m_machine(std::move(machine))
    {
    }

    /// The observers of a new control object, which closes them when it goes.
    std::shared_ptr<Hub> open() { return m_hubs->open(); }

    /// Calls `notification` on everybody who is there after `delay`, on the simulator's thread.
    template <typename Notification, typename... Arguments>
    void notify(std::chrono::microseconds delay, Notification notification, const Arguments&... arguments)
    {
        m_machine->notify(
            [hubs = m_hubs, notification, arguments...] {
                for (const auto& hub : hubs->living())
                    hub->notify(notification, arguments...);
            },
            delay);
    }

private:
    class Hubs
    {
    public:
        std::shared_ptr<Hub> open()
        {
            auto opened = std::make_shared<Hub>();
            const std::lock_guard guard(m_mutex);
            std::erase_if(m_hubs, [](const auto& hub) { return hub.expired(); });
            m_hubs.push_back(opened);
            return opened;
        }

        std::vector<std::shared_ptr<Hub>> living()
        {
            std::vector<std::shared_ptr<Hub>> living;
            const std::lock_guard guard(m_mutex);
            for (const auto& each : m_hubs)
                if (auto hub = each.lock())
                    living.push_back(std::move(hub));
            return living;
        }

    private:
        std::mutex m_mutex; // guards all below
        std::vector<std::weak_ptr<Hub>> m_hubs;
    };

    const std::shared_ptr<Machine> m_machine;
    const std::shared_ptr<Hubs> m_hubs = std::make_shared<Hubs>();
};

} // namespace tov::simulator

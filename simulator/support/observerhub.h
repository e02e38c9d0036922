#pragma once

#include <algorithm>
#include <functional>
#include <mutex>
#include <vector>

namespace tov::simulator {

/// The observers that are registered with one simulated control. Registering one again changes nothing.
///
/// Once removal or `close()` has returned, no notification reaches the observer any more: both wait for one
/// that is being delivered, unless they are called from inside it.
///
/// Thread: *any thread*.
template <typename Observer>
class ObserverHub
{
public:
    /// Registers `observer`, which is not owned and must not be null.
    void add(Observer* observer)
    {
        const std::lock_guard guard(m_mutex);
        if (std::ranges::find(m_observers, observer) == m_observers.end())
            m_observers.push_back(observer);
    }

    /// Removes `observer`; one that is not registered is ignored.
    void remove(Observer* observer)
    {
        const std::lock_guard guard(m_mutex);
        std::erase(m_observers, observer);
    }

    /// Removes everybody: the control is gone.
    void close()
    {
        const std::lock_guard guard(m_mutex);
        m_observers.clear();
    }

    /// Calls `notification` on every observer but those that an earlier one removed.
    template <typename Notification, typename... Arguments>
    void notify(Notification notification, const Arguments&... arguments)
    {
        const std::lock_guard guard(m_mutex);
        const std::vector<Observer*> observers = m_observers;
        for (Observer* observer : observers)
            if (std::ranges::find(m_observers, observer) != m_observers.end())
                std::invoke(notification, *observer, arguments...);
    }

private:
    std::recursive_mutex m_mutex; // guards all below
    std::vector<Observer*> m_observers;
};

} // namespace tov::simulator

#pragma once

#include <functional>
#include <mutex>
#include <vector>

namespace tov::devices::service {

/// The application's observers of one control, not owned, in the order in which they came; one that came
/// twice is told twice.
///
/// Notifications are delivered under the lock, so removal waits for a running one and an observer must not
/// change the list.
///
/// Thread: *any thread*.
template <typename Observer>
class ObserverList
{
public:
    void add(Observer* observer)
    {
        const std::lock_guard guard(m_mutex);
        m_observers.push_back(observer);
    }

    /// Removes every entry of `observer`.
    void remove(Observer* observer)
    {
        const std::lock_guard guard(m_mutex);
        std::erase(m_observers, observer);
    }

    /// Calls `notification` on every observer.
    template <typename Notification, typename... Arguments>
    void notify(Notification notification, const Arguments&... arguments)
    {
        const std::lock_guard guard(m_mutex);
        for (Observer* observer : m_observers)
            std::invoke(notification, *observer, arguments...);
    }

    /// The same over a copy of the list.
    template <typename Notification, typename... Arguments>
    void notifyCopy(Notification notification, const Arguments&... arguments)
    {
        const std::lock_guard guard(m_mutex);
        const std::vector<Observer*> observers = m_observers;
        for (Observer* observer : observers)
            std::invoke(notification, *observer, arguments...);
    }

private:
    std::mutex m_mutex; // guards all below
    std::vector<Observer*> m_observers;
};

} // namespace tov::devices::service

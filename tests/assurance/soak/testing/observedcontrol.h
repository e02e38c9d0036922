#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <vector>

namespace tov::testing {

/// How often controls have told an observer something, all of them together.
inline std::atomic<std::uint64_t> toldByControls = 0;

/// Whether a notification that was counted is kept from its observer now and then, which must be noticed.
inline bool losesNotifications = false;

/// Stands in for the base of the same name: tells its observers, and removal waits for that, as an SDK promises.
template <typename Observer>
class ObservedControl
{
public:
    void tell(auto notification)
    {
        const std::lock_guard guard(m_mutex);
        for (Observer* const observer : m_observers)
            if (++toldByControls % 1000 != 0 || !losesNotifications)
                notification(*observer);
    }

protected:
    ~ObservedControl() = default;

    void add(Observer* observer)
    {
        const std::lock_guard guard(m_mutex);
        m_observers.push_back(observer);
    }
    void remove(Observer* observer)
    {
        const std::lock_guard guard(m_mutex);
        std::erase(m_observers, observer);
    }

private:
    std::mutex m_mutex; // guards all below, also while observers are told
    std::vector<Observer*> m_observers;
};

} // namespace tov::testing

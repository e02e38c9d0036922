#pragma once

#include <algorithm>
#include <mutex>
#include <vector>

namespace tov::testing {

/// The observers that were registered with an SDK fake and not removed; one registered twice stands here twice.
template <typename Observer>
class ObservedControl
{
public:
    /// Those that are registered now.
    std::vector<Observer*> observers() const
    {
        const std::lock_guard guard(m_mutex);
        return m_observers;
    }

protected:
    ~ObservedControl() = default;

    /// Registers `observer`, once more if it is.
    void add(Observer* observer)
    {
        const std::lock_guard guard(m_mutex);
        m_observers.push_back(observer);
    }
    /// Ends every registration of `observer`.
    void remove(Observer* observer)
    {
        const std::lock_guard guard(m_mutex);
        std::erase(m_observers, observer);
    }

private:
    mutable std::mutex m_mutex; // guards all below
    std::vector<Observer*> m_observers;
};

} // namespace tov::testing

#pragma once

#include <algorithm>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace tov::testing {

/// What is broken, by the id of the rule; nothing if it is empty.
class Broken
{
public:
    explicit Broken(std::string_view rule)
        : m_rule(rule)
    {
    }

    bool is(std::string_view rule) const { return m_rule == rule; }

private:
    std::string m_rule;
};

/// The observers of one control. As they should be, but for what is broken.
template <typename Observer>
class Registrations
{
public:
    explicit Registrations(const Broken& broken)
        : m_broken(broken)
    {
    }

    void add(Observer* observer)
    {
        const std::lock_guard guard(m_mutex);
        const bool again = has(observer);
        if (again && m_broken.is("OBSERVER-4"))
            throw std::logic_error("already registered");
        if (!again || m_broken.is("OBSERVER-6"))
            m_observers.push_back(observer);
    }

    void remove(Observer* observer)
    {
        std::unique_lock lock(m_mutex);
        if (!has(observer) && m_broken.is("OBSERVER-2"))
            throw std::invalid_argument("not registered");
        if (m_broken.is("OBSERVER-6")) {
            if (has(observer))
                m_observers.erase(std::ranges::find(m_observers, observer));
        } else {
            std::erase(m_observers, observer);
        }
        if (!m_broken.is("OBSERVER-1"))
            waitForTheTeller(lock);
    }

    // Of a control that goes.
    void close()
    {
        if (m_broken.is("OBSERVER-3"))
            return;
        std::unique_lock lock(m_mutex);
        m_observers.clear();
        waitForTheTeller(lock);
    }

    void tell(const std::function<void(Observer&)>& notification)
    {
        std::unique_lock lock(m_mutex);
        m_told.wait(lock, [this] { return m_teller == std::thread::id(); });
        m_teller = std::this_thread::get_id();
        for (Observer* const observer : std::vector(m_observers))
            if (has(observer)) {
                lock.unlock();
                notification(*observer);
                lock.lock();
            }
        m_teller = {};
        m_told.notify_all();
    }

private:
    bool has(Observer* observer) const { return std::ranges::find(m_observers, observer) != m_observers.end(); }

    void waitForTheTeller(std::unique_lock<std::mutex>& lock)
    {
        const auto self = std::this_thread::get_id();
        const bool forItself = m_broken.is("LIFE-2") || m_broken.is("OBSERVER-11");
        m_told.wait(lock, [&] { return m_teller == std::thread::id() || (m_teller == self && !forItself); });
    }

    const Broken m_broken;
    std::mutex m_mutex; // guards all below
    std::condition_variable m_told;
    std::vector<Observer*> m_observers;
    std::thread::id m_teller; // one thread tells, if any
};

} // namespace tov::testing

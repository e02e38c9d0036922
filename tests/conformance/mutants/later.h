#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace tov::testing {

/// Does things later on a thread of its own, one after the other; what waits at its end is not done any more.
class Later
{
public:
    using Clock = std::chrono::steady_clock;

    void run(std::chrono::milliseconds delay, std::function<void()> thing)
    {
        const std::lock_guard guard(m_mutex);
        m_waiting.emplace(Clock::now() + delay, std::move(thing));
        m_changed.notify_one();
    }

private:
    void work(const std::stop_token& stop)
    {
        std::unique_lock lock(m_mutex);
        while (!stop.stop_requested()) {
            if (m_waiting.empty()) {
                m_changed.wait(lock, stop, [this] { return !m_waiting.empty(); });
                continue;
            }
            const auto next = m_waiting.begin()->first;
            if (Clock::now() < next) {
                m_changed.wait_until(lock, stop, next, [&] { return m_waiting.begin()->first < next; });
                continue;
            }
            const auto thing = std::move(m_waiting.begin()->second);
            m_waiting.erase(m_waiting.begin());
            lock.unlock();
            thing();
            lock.lock();
        }
    }

    std::mutex m_mutex; // guards all below but the thread
    std::condition_variable_any m_changed;
    std::multimap<Clock::time_point, std::function<void()>> m_waiting;
    std::jthread m_thread{[this](const std::stop_token& stop) { work(stop); }};
};

} // namespace tov::testing

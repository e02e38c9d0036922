#pragma once

#include <condition_variable>
#include <mutex>

namespace tov::testing {

/// Where threads wait for each other, again and again. Like std::barrier, of which GCC 12 loses wake-ups on platforms
/// without a futex.
class Rendezvous
{
public:
    explicit Rendezvous(int threads)
        : m_threads(threads)
    {
    }

    void arriveAndWait()
    {
        std::unique_lock lock(m_mutex);
        const int round = m_round;
        if (++m_arrived == m_threads) {
            m_arrived = 0;
            ++m_round;
            m_changed.notify_all();
        }
        m_changed.wait(lock, [&] { return m_round != round; });
    }

private:
    const int m_threads;
    std::mutex m_mutex; // guards all below
    std::condition_variable m_changed;
    int m_arrived = 0;
    int m_round = 0;
};

} // namespace tov::testing

#pragma once

#include <chrono>
#include <functional>
#include <thread>
#include <utility>

namespace tov::conformance {

/// Causes notifications again and again, on a thread of its own, as long as it lives.
class Pump
{
public:
    explicit Pump(std::function<void()> cause)
        : m_thread([cause = std::move(cause)](const std::stop_token& stop) {
            while (!stop.stop_requested()) {
                try {
                    cause();
                } catch (...) { // an operation may throw
                    std::this_thread::yield();
                }
                std::this_thread::sleep_for(std::chrono::microseconds(500));
            }
        })
    {
    }

private:
    std::jthread m_thread;
};

} // namespace tov::conformance

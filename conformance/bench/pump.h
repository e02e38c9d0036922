#pragma once

#include "conformance/bench/ears.h"

#include <chrono>
#include <functional>
#include <thread>
#include <utility>

namespace tov::conformance {

/// Causes notifications again and again, on a thread of its own, as long as it lives: each when somebody has heard of
/// the one before, or nobody does, so that they do not pile up in an instrument that is slower.
class Pump
{
public:
    explicit Pump(std::function<void()> cause)
        : m_thread([cause = std::move(cause)](const std::stop_token& stop) {
            while (!stop.stop_requested())
                causeOne(cause);
        })
    {
    }

private:
    static void causeOne(const std::function<void()>& cause)
    {
        using std::chrono::steady_clock;
        constexpr std::chrono::milliseconds forNobody(5);
        constexpr std::chrono::microseconds between(500);
        const int told = Ear::allTold();
        try {
            cause();
        } catch (...) { // an operation may throw
            std::this_thread::yield();
        }
        const auto end = steady_clock::now() + forNobody;
        do // NOLINT(*-avoid-do-while): others have their turn in any case
            std::this_thread::sleep_for(between);
        while (Ear::allTold() == told && steady_clock::now() < end);
    }

    std::jthread m_thread;
};

} // namespace tov::conformance

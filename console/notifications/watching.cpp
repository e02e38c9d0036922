#include "console/notifications/watching.h"

#include "console/session/consolesession.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <iostream>
#include <thread>

namespace tov::console {

namespace {

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): all that a signal handler can reach
std::atomic<bool> stopped = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

void stop(int /*signal*/)
{
    stopped = true;
}

} // namespace

Watch::Watch(ConsoleSession& console, const WatchArguments& arguments)
    : m_console(console)
    , m_exercise(arguments.exercise)
    , m_interrupt(std::signal(SIGINT, stop))
    , m_terminate(std::signal(SIGTERM, stop))
{
    stopped = false;
    if (m_exercise == 0)
        std::cerr << "waiting for notifications; Ctrl-C ends\n";
}

Watch::~Watch()
{
    std::signal(SIGINT, m_interrupt);
    std::signal(SIGTERM, m_terminate);
}

void Watch::run(const std::function<void()>& exercise, const std::function<void()>& everySecond) const
{
    using Clock = std::chrono::steady_clock;

    for (int round = 0; round < m_exercise && !stopped; ++round)
        exercise();
    for (auto next = Clock::now() + std::chrono::seconds(1); m_exercise == 0 && !stopped;) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        m_console.passOnNotices();
        if (!everySecond || Clock::now() < next)
            continue;
        everySecond();
        next += std::chrono::seconds(1);
    }
}

} // namespace tov::console

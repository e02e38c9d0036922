#pragma once

#include "simulator/faults.h"
#include "simulator/timing.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <expected>
#include <functional>
#include <map>
#include <mutex>
#include <random>
#include <system_error>
#include <thread>
#include <utility>

namespace tov::simulator {

/// What the simulated controls of one instrument share: its thread, its time model and its faults.
///
/// Every operation is answered exactly once, also when the machine stops meanwhile.
///
/// Thread: *any thread*.
class Machine
{
public:
    /// `releaseControls` is what the fault of that name runs; it is not called after `stop()`.
    Machine(const Timing& timing, std::function<void()> releaseControls);
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    /// Does what `stop()` does.
    ~Machine();

    /// What is wrong with the operations; lives as long as the machine.
    Faults& faults() noexcept { return m_faults; }

    /// Throws if `operation`, which does not answer by a callback, was told to.
    void begin(Operation operation);

    /// Does `work` when the time has come and answers with what it gives.
    template <typename Value>
    void answer(Operation operation, std::function<void(Value, std::error_code)> callback,
                std::function<std::expected<Value, std::error_code>()> work);

    /// The same for an operation without a value; `work` gives an error code.
    void answer(Operation operation, std::function<void(std::error_code)> callback,
                std::function<std::error_code()> work);

    /// Runs `delivery` on the machine's thread after `delay`, or when it stops: at once if this is that thread and
    /// there is no delay, otherwise after what is due.
    void notify(std::function<void()> delivery, std::chrono::microseconds delay = {});

    /// Waits until nothing is left to answer or to deliver on the machine's thread, and not there.
    void waitUntilQuiet();

    /// Answers what is waiting without further delay and ends the thread. What is asked afterwards is answered
    /// at once, on the caller's thread; notifications are dropped. Not on the machine's thread, and not from two
    /// threads at a time.
    void stop();

private:
    using Clock = std::chrono::steady_clock;
    using Job = std::function<void()>;

    Fault beginAnswer(Operation operation);
    void perform(const Fault& fault, Job job);
    void releaseControls();
    Clock::duration delayOf(const Fault& fault);
    void run();

    const Timing m_timing;
    Faults m_faults;

    std::recursive_mutex m_releaseMutex; // guards m_releaseControls, also while it runs
    std::function<void()> m_releaseControls;

    std::mutex m_mutex; // guards all below but the thread
    std::condition_variable m_changed;
    std::multimap<Clock::time_point, Job> m_waiting;
    std::mt19937 m_random;
    bool m_working = false;
    bool m_stopping = false;
    std::thread m_thread;
    const std::thread::id m_threadId = m_thread.get_id();
};

template <typename Value>
void Machine::answer(Operation operation, std::function<void(Value, std::error_code)> callback,
                     std::function<std::expected<Value, std::error_code>()> work)
{
    const Fault fault = beginAnswer(operation);
    perform(fault,
            [forced = fault.error.value_or(std::error_code()), callback = std::move(callback), work = std::move(work)] {
                if (forced.value() != 0)
                    return callback(Value(), forced);
                auto done = work();
                if (done)
                    callback(std::move(*done), forced);
                else
                    callback(Value(), done.error());
            });
}

} // namespace tov::simulator

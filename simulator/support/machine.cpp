#include "simulator/support/machine.h"

#include <stdexcept>

namespace tov::simulator {

namespace {

void throwIfTold(const Fault& fault)
{
    if (fault.throws)
        throw std::runtime_error("the simulated instrument was told to throw");
}

} // namespace

Machine::Machine(const Timing& timing, std::function<void()> releaseControls)
    : m_timing(timing)
    , m_releaseControls(std::move(releaseControls))
    , m_random(timing.seed)
    , m_thread([this] { run(); })
{
}

Machine::~Machine()
{
    stop();
}

void Machine::answer(Operation operation, std::function<void(std::error_code)> callback,
                     std::function<std::error_code()> work)
{
    const Fault fault = beginAnswer(operation);
    perform(fault,
            [forced = fault.error.value_or(std::error_code()), callback = std::move(callback), work = std::move(work)] {
                const std::error_code error = forced.value() != 0 ? forced : work();
                callback(error ? error : forced);
            });
}

void Machine::begin(Operation operation)
{
    throwIfTold(m_faults.next(operation));
}

Fault Machine::beginAnswer(Operation operation)
{
    Fault fault = m_faults.next(operation);
    throwIfTold(fault);
    return fault;
}

void Machine::perform(const Fault& fault, Job job)
{
    if (fault.releasesControls)
        job = [this, answer = std::move(job)] {
            releaseControls();
            answer();
        };

    {
        const std::lock_guard guard(m_mutex);
        if (!m_stopping && (m_timing.answers == Timing::Answers::Later || fault.delay)) {
            m_waiting.emplace(Clock::now() + delayOf(fault), std::move(job));
            m_changed.notify_all();
            return;
        }
    }
    job();
}

void Machine::releaseControls()
{
    const std::lock_guard guard(m_releaseMutex);
    if (m_releaseControls)
        m_releaseControls();
}

Machine::Clock::duration Machine::delayOf(const Fault& fault)
{
    if (fault.delay)
        return *fault.delay;
    if (m_timing.order == Timing::Order::AsAsked)
        return m_timing.delay;
    return Clock::duration(m_timing.delay) * std::uniform_int_distribution(0, 200)(m_random) / 100;
}

void Machine::notify(std::function<void()> delivery, std::chrono::microseconds delay)
{
    if (std::this_thread::get_id() == m_threadId && delay.count() == 0) {
        delivery();
        return;
    }

    const std::lock_guard guard(m_mutex);
    if (m_stopping)
        return;
    m_waiting.emplace(Clock::now() + delay, std::move(delivery));
    m_changed.notify_all();
}

void Machine::waitUntilQuiet()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_waiting.empty() && !m_working; });
}

void Machine::stop()
{
    {
        const std::lock_guard guard(m_releaseMutex);
        m_releaseControls = nullptr;
    }
    {
        const std::lock_guard guard(m_mutex);
        m_stopping = true;
        m_changed.notify_all();
    }
    if (m_thread.joinable())
        m_thread.join();
}

void Machine::run()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        if (m_waiting.empty()) {
            if (m_stopping)
                return;
            m_changed.wait(lock);
            continue;
        }
        const auto next = m_waiting.begin();
        if (!m_stopping && next->first > Clock::now()) {
            m_changed.wait_until(lock, next->first);
            continue;
        }
        {
            const Job job = std::move(next->second);
            m_waiting.erase(next);
            m_working = true;
            lock.unlock();
            job();
        }
        lock.lock();
        m_working = false;
        m_changed.notify_all();
    }
}

} // namespace tov::simulator

#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <type_traits>
#include <utility>

namespace tov::python {

/// A thread that does what it is given, one thing after the other. It owns a session, so that a script needs neither
/// an event loop nor a rule for its threads.
///
/// Thread: *any thread*.
class SessionThread
{
public:
    SessionThread();
    SessionThread(const SessionThread&) = delete;
    SessionThread& operator=(const SessionThread&) = delete;

    /// Does what it was given, and waits for that; not on this thread itself.
    ~SessionThread();

    /// Does this when its turn comes; never once it has been left to itself.
    void post(std::function<void()> work) { post(*m_queue, std::move(work)); }

    /// Does the same, and may outlive this object: what it is given when the thread has ended is never done.
    std::function<void(std::function<void()>)> poster() const
    {
        return [queue = m_queue](std::function<void()> work) { post(*queue, std::move(work)); };
    }

    /// Does this and waits for it; at once when this is the thread itself.
    template <typename Work>
    auto call(Work work) -> std::invoke_result_t<Work&>
    {
        if (isCurrent())
            return work();
        std::packaged_task<std::invoke_result_t<Work&>()> task(std::move(work));
        auto done = task.get_future();
        post([&task] { task(); });
        return done.get();
    }

    /// Ends when everything is done that it was given until then; nobody waits for it.
    void leaveToItself();

private:
    struct Queue
    {
        std::mutex mutex; // guards all below
        std::condition_variable changed;
        std::deque<std::function<void()>> work;
        bool ends = false;
    };

    bool isCurrent() const { return std::this_thread::get_id() == m_id; }
    static void post(Queue& queue, std::function<void()> work);
    static void run(const std::shared_ptr<Queue>& queue);
    void end();

    // Stays for a thread that was left to itself, and for posters.
    std::shared_ptr<Queue> m_queue = std::make_shared<Queue>();
    std::thread m_thread;
    std::thread::id m_id;
};

} // namespace tov::python

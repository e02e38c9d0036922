#include "python/sessionthread.h"

namespace tov::python {

SessionThread::SessionThread()
    : m_thread([queue = m_queue] { run(queue); })
    , m_id(m_thread.get_id())
{
}

SessionThread::~SessionThread()
{
    end();
    if (m_thread.joinable())
        m_thread.join();
}

void SessionThread::post(Queue& queue, std::function<void()> work)
{
    {
        const std::lock_guard guard(queue.mutex);
        queue.work.push_back(std::move(work));
    }
    queue.changed.notify_one();
}

void SessionThread::leaveToItself()
{
    end();
    m_thread.detach();
}

void SessionThread::end()
{
    {
        const std::lock_guard guard(m_queue->mutex);
        m_queue->ends = true;
    }
    m_queue->changed.notify_one();
}

void SessionThread::run(const std::shared_ptr<Queue>& queue)
{
    std::unique_lock lock(queue->mutex);
    while (true) {
        queue->changed.wait(lock, [&] { return queue->ends || !queue->work.empty(); });
        if (queue->work.empty())
            return;
        const auto work = std::exchange(queue->work.front(), nullptr);
        queue->work.pop_front();
        lock.unlock();
        work();
        lock.lock();
    }
}

} // namespace tov::python

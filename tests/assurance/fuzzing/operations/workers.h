#pragma once

#include <array>
#include <exception>
#include <functional>
#include <semaphore>
#include <thread>
#include <utility>

namespace tov::testing {

/// Threads that take turns: whoever hands something over waits until it is done, so that a run can be repeated.
class Workers
{
public:
    static constexpr int count = 3;

    Workers() = default;
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;
    ~Workers()
    {
        for (Worker& worker : m_workers) {
            worker.work = nullptr;
            worker.begin.release();
        }
    }

    /// Does `work` on the thread `number`, on the calling one if that waits already. What it throws passes through.
    void run(int number, const std::function<void()>& work)
    {
        Worker* const worker = number == 0 ? nullptr : &m_workers.at(static_cast<std::size_t>(number) - 1);
        if (worker == nullptr || worker->busy) {
            work();
            return;
        }
        worker->busy = true;
        worker->work = &work;
        worker->begin.release();
        worker->end.acquire();
        worker->busy = false;
        if (worker->thrown)
            std::rethrow_exception(std::exchange(worker->thrown, nullptr));
    }

private:
    struct Worker
    {
        std::binary_semaphore begin{0};
        std::binary_semaphore end{0};
        const std::function<void()>* work = nullptr;
        std::exception_ptr thrown;
        bool busy = false;
        std::jthread thread{[this] {
            for (begin.acquire(); work != nullptr; begin.acquire()) {
                try {
                    (*work)();
                } catch (...) {
                    thrown = std::current_exception();
                }
                end.release();
            }
        }};
    };

    std::array<Worker, count - 1> m_workers;
};

} // namespace tov::testing

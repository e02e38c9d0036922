#pragma once

#include <pybind11/pybind11.h>

#include <chrono>
#include <thread>
#include <type_traits>

namespace tov::python {

namespace py = pybind11;

/// Takes the interpreter's lock by `take`. At its end the interpreter unwinds threads that want the lock, which
/// destructors do not bear; they stop here instead, until the process ends.
template <typename Take>
auto takeTheLock(Take take)
try {
    return take();
} catch (...) {
    while (true)
        std::this_thread::sleep_for(std::chrono::hours(1));
}

/// Lets go of the interpreter's lock, which this thread has, for as long as this exists.
class WithoutLock
{
public:
    WithoutLock()
        : m_state(PyEval_SaveThread())
    {
    }
    WithoutLock(const WithoutLock&) = delete;
    WithoutLock& operator=(const WithoutLock&) = delete;
    ~WithoutLock()
    {
        takeTheLock([this] { PyEval_RestoreThread(m_state); });
    }

private:
    PyThreadState* m_state;
};

/// Has the interpreter's lock, on any thread, for as long as this exists.
class WithLock
{
public:
    WithLock()
        : m_state(takeTheLock(PyGILState_Ensure))
    {
    }
    WithLock(const WithLock&) = delete;
    WithLock& operator=(const WithLock&) = delete;
    ~WithLock() { PyGILState_Release(m_state); }

private:
    PyGILState_STATE m_state;
};

/// Runs `call` without the interpreter's lock, if this thread has it.
template <typename Call>
auto withoutTheLock(Call call) -> std::invoke_result_t<Call&>
{
    if (PyGILState_Check() == 0)
        return call();
    const WithoutLock unlocked;
    return call();
}

} // namespace tov::python

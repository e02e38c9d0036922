#pragma once

#include <map>
#include <mutex>
#include <thread>

namespace tov::simulator {

/// A value for each thread that asks for one, so that what a control hands out by reference stays as it is while other
/// threads ask too. The values live as long as this object.
///
/// Thread: *any thread*.
template <typename Value>
class PerThread
{
public:
    /// The calling thread's own.
    Value& own()
    {
        const std::lock_guard guard(m_mutex);
        return m_values[std::this_thread::get_id()];
    }

private:
    std::mutex m_mutex;
    std::map<std::thread::id, Value> m_values;
};

} // namespace tov::simulator

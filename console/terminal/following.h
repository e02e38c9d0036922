#pragma once

#include <atomic>
#include <mutex>
#include <string>

namespace tov::console {

/// Standard output of what follows something, line by line, while other threads print too.
///
/// Thread: *any thread*.
class Following
{
public:
    /// Prints lines, at once and whole.
    void print(const std::string& lines);

    /// Throws `OutputLost` when lines did not get out, or nobody reads them any more.
    void requireReader() const;

private:
    std::mutex m_mutex; // one at a time
    std::atomic<bool> m_lost = false;
};

} // namespace tov::console

#pragma once

#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

namespace tov::conformance {

/// Begins `work` on several threads; their end stops and waits for it.
[[nodiscard]] inline std::vector<std::jthread> onThreads(std::size_t count,
                                                         const std::function<void(const std::stop_token&)>& work)
{
    std::vector<std::jthread> threads(count);
    for (std::jthread& thread : threads)
        thread = std::jthread(work);
    return threads;
}

} // namespace tov::conformance

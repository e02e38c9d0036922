#pragma once

#include <gtest/gtest.h>

#include <chrono>

namespace tov::testing {

/// The emergency brake of a loop that goes on until something has happened, however long the scheduler takes for it.
class Patience
{
public:
    explicit Patience(const char* awaited)
        : m_awaited(awaited)
    {
    }

    /// Whether to go on. Not after a failure of the test, and what has not happened after minutes is one.
    bool lasts() const
    {
        if (::testing::Test::HasFailure())
            return false;
        if (std::chrono::steady_clock::now() < m_end)
            return true;
        ADD_FAILURE() << "waited in vain until " << m_awaited;
        return false;
    }

private:
    const char* const m_awaited;
    const std::chrono::steady_clock::time_point m_end = std::chrono::steady_clock::now() + std::chrono::minutes(5);
};

} // namespace tov::testing

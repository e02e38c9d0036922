#pragma once

namespace tov::testing {

/// While it exists, what a test does to the calling thread's allocations leaves them alone: they are a fake's own.
class Undisturbed
{
public:
    Undisturbed() noexcept { ++s_depth; }
    Undisturbed(const Undisturbed&) = delete;
    Undisturbed& operator=(const Undisturbed&) = delete;
    ~Undisturbed() { --s_depth; }

    /// Whether one exists in this thread.
    static bool exists() noexcept { return s_depth > 0; }

private:
    inline static thread_local int s_depth = 0;
};

} // namespace tov::testing

#pragma once

namespace tov::testing {

/// Heap allocations that the calling thread made so far, through the global `operator new` that this
/// replaces in every program that links it.
long allocations() noexcept;

/// Those of all threads.
long allocationsOfAllThreads() noexcept;

/// Makes the calling thread's allocations fail with `std::bad_alloc` while it exists.
class FailingAllocations
{
public:
    FailingAllocations() noexcept;
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;
    ~FailingAllocations();
};

} // namespace tov::testing

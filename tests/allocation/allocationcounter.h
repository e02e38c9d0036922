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

/// Counts the bytes on the heap while it exists, of all threads. Only one at a time.
class HeapBytes
{
public:
    HeapBytes() noexcept;
    HeapBytes(const HeapBytes&) = delete;
    HeapBytes& operator=(const HeapBytes&) = delete;
    ~HeapBytes();

    /// More than at the beginning: now, and at the worst moment since the last call of `resetPeak()`.
    long long now() const noexcept;
    long long peak() const noexcept;

    void resetPeak() noexcept;
};

} // namespace tov::testing

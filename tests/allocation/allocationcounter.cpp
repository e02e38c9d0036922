#include "allocation/allocationcounter.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include <malloc.h>

namespace {

thread_local long count = 0;
std::atomic<long> countOfAll = 0;
thread_local bool failing = false;

std::atomic<bool> countingBytes = false;
std::atomic<long long> bytes = 0;
std::atomic<long long> peakOfBytes = 0;

long long sizeOf(void* block)
{
#ifdef _WIN32
    return static_cast<long long>(_msize(block));
#else
    return static_cast<long long>(malloc_usable_size(block));
#endif
}

void countBytes(long long more)
{
    const long long now = bytes += more;
    long long peak = peakOfBytes;
    while (now > peak && !peakOfBytes.compare_exchange_weak(peak, now)) {
    }
}

} // namespace

void* operator new(std::size_t size)
{
    ++count;
    ++countOfAll;
    void* const block = failing ? nullptr : std::malloc(size > 0 ? size : 1);
    if (block == nullptr)
        throw std::bad_alloc();
    if (countingBytes)
        countBytes(sizeOf(block));
    return block;
}

void operator delete(void* block) noexcept
{
    if (countingBytes && block != nullptr)
        countBytes(-sizeOf(block));
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    operator delete(block);
}

namespace tov::testing {

long allocations() noexcept
{
    return count;
}

long allocationsOfAllThreads() noexcept
{
    return countOfAll;
}

FailingAllocations::FailingAllocations() noexcept
{
    failing = true;
}

FailingAllocations::~FailingAllocations()
{
    failing = false;
}

HeapBytes::HeapBytes() noexcept
{
    bytes = 0;
    peakOfBytes = 0;
    countingBytes = true;
}

HeapBytes::~HeapBytes()
{
    countingBytes = false;
}

long long HeapBytes::now() const noexcept
{
    return bytes;
}

long long HeapBytes::peak() const noexcept
{
    return peakOfBytes;
}

void HeapBytes::resetPeak() noexcept
{
    peakOfBytes = bytes.load();
}

} // namespace tov::testing

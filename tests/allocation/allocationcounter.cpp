#include "allocation/allocationcounter.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

thread_local long count = 0;
std::atomic<long> countOfAll = 0;
thread_local bool failing = false;

} // namespace

void* operator new(std::size_t size)
{
    ++count;
    ++countOfAll;
    void* const block = failing ? nullptr : std::malloc(size > 0 ? size : 1);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
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

} // namespace tov::testing

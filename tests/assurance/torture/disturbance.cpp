// Takes the place of malloc and of `new` in the whole program, in Qt and in the standard library too.

#include "disturbance.h"

#include "testing/undisturbed.h"

#include <cstddef>
#include <new>

// What the address sanitizer has in these places.
extern "C" {
void* __interceptor_malloc(std::size_t size);
void* __interceptor_calloc(std::size_t count, std::size_t size);
void* __interceptor_realloc(void* block, std::size_t size);
void __interceptor_free(void* block);
}

namespace {

using tov::testing::Disturbance;

thread_local bool disturbed = false;
thread_local Disturbance prepared;
thread_local long counted = 0;
thread_local long live = 0;

bool strikes(Disturbance::Of what)
{
    if (!disturbed || prepared.of != what || prepared.nth == 0)
        return false;
    ++counted;
    return counted == prepared.nth || (prepared.lasts && counted > prepared.nth)
           || (prepared.secondAfter > 0 && counted == prepared.nth + prepared.secondAfter);
}

bool fails()
{
    return !tov::testing::Undisturbed::exists() && strikes(Disturbance::Of::Allocations);
}

void* counting(void* block)
{
    live += block != nullptr ? 1 : 0;
    return block;
}

} // namespace

#define REPLACEMENT __attribute__((visibility("default")))

extern "C" REPLACEMENT void* malloc(std::size_t size) noexcept
{
    return fails() ? nullptr : counting(__interceptor_malloc(size));
}

extern "C" REPLACEMENT void* calloc(std::size_t count, std::size_t size) noexcept
{
    return fails() ? nullptr : counting(__interceptor_calloc(count, size));
}

extern "C" REPLACEMENT void* realloc(void* block, std::size_t size) noexcept
{
    if (fails())
        return nullptr;
    void* const moved = __interceptor_realloc(block, size);
    return block == nullptr ? counting(moved) : moved;
}

extern "C" REPLACEMENT void free(void* block) noexcept
{
    live -= block != nullptr ? 1 : 0;
    __interceptor_free(block);
}

void* operator new(std::size_t size)
{
    void* const block = malloc(size > 0 ? size : 1);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return malloc(size > 0 ? size : 1);
}

void operator delete(void* block) noexcept
{
    free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept
{
    free(block);
}

void operator delete[](void* block) noexcept
{
    free(block);
}

void operator delete[](void* block, std::size_t /*size*/) noexcept
{
    free(block);
}

void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept
{
    free(block);
}

namespace tov::testing {

void prepare(const Disturbance& disturbance) noexcept
{
    prepared = disturbance;
    counted = 0;
}

bool hasStruck() noexcept
{
    return counted >= prepared.nth;
}

void sdkIsCalled()
{
    if (strikes(Disturbance::Of::SdkCalls))
        throw Refusal();
}

long liveBlocks() noexcept
{
    return live;
}

Disturbed::Disturbed() noexcept
{
    disturbed = true;
}

Disturbed::~Disturbed()
{
    disturbed = false;
}

} // namespace tov::testing

#pragma once

#include <cstddef>
#include <functional>
#include <new>

namespace tov::devices::service {

/// Room on the stack for the few blocks that a standard type allocates during one call; blocks that do not fit
/// come from the heap. The room of a block is not used again.
///
/// Thread: blocks may be freed on *any thread*; everything else is the owner's.
template <std::size_t Size>
class StackArena
{
public:
    StackArena() = default;
    StackArena(const StackArena&) = delete;
    StackArena& operator=(const StackArena&) = delete;
    ~StackArena() = default;

    void* allocate(std::size_t bytes)
    {
        // Rounded up, so that the next block is aligned for everything too.
        const std::size_t rounded = (bytes + alignof(std::max_align_t) - 1) & ~(alignof(std::max_align_t) - 1);
        if (rounded > Size - m_used)
            return ::operator new(bytes);
        void* const block = m_room + m_used;
        m_used += rounded;
        return block;
    }

    void deallocate(void* block) noexcept
    {
        const std::less<const void*> before;
        if (before(block, m_room) || !before(block, m_room + Size))
            ::operator delete(block);
    }

private:
    alignas(std::max_align_t) std::byte m_room[Size];
    std::size_t m_used = 0;
};

/// The allocator over a `StackArena`, which must outlive what is allocated.
template <typename T, std::size_t Size>
class StackAllocator
{
public:
    static_assert(alignof(T) <= alignof(std::max_align_t));

    using value_type = T;

    template <typename Other>
    struct rebind
    {
        using other = StackAllocator<Other, Size>;
    };

    explicit StackAllocator(StackArena<Size>& arena) noexcept
        : m_arena(&arena)
    {
    }
    template <typename Other>
    explicit(false) StackAllocator(const StackAllocator<Other, Size>& other) noexcept
        : m_arena(other.m_arena)
    {
    }

    T* allocate(std::size_t count) { return static_cast<T*>(m_arena->allocate(count * sizeof(T))); }
    void deallocate(T* block, std::size_t) noexcept { m_arena->deallocate(block); }

    friend bool operator==(const StackAllocator&, const StackAllocator&) = default;

private:
    template <typename Other, std::size_t OtherSize>
    friend class StackAllocator;

    StackArena<Size>* m_arena;
};

} // namespace tov::devices::service

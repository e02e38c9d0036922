#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <new>
#include <span>

namespace tov::devices::service {

/// Room on the stack for the few blocks that a standard type allocates during one call; blocks that do not fit
/// come from the heap. The room of a block is not used again.
///
/// Thread: blocks may be freed on *any thread*; everything else is the *owner's thread*.
template <std::size_t Size>
class StackArena
{
public:
    // Leaves the room as it is: clearing it would cost more than it saves.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init,modernize-use-equals-default)
    StackArena() noexcept {}
    StackArena(const StackArena&) = delete;
    StackArena& operator=(const StackArena&) = delete;
    ~StackArena() = default;

    void* allocate(std::size_t bytes)
    {
        // Rounded up, so that the next block is aligned for everything too.
        const std::size_t rounded = (bytes + alignof(std::max_align_t) - 1) & ~(alignof(std::max_align_t) - 1);
        if (rounded > Size - m_used)
            return ::operator new(bytes);
        void* const block = std::span(m_room).subspan(m_used).data();
        m_used += rounded;
        return block;
    }

    void deallocate(void* block) noexcept
    {
        constexpr std::less<> before;
        const void* const begin = m_room.data();
        const void* const end = std::to_address(m_room.end());
        if (before(block, begin) || !before(block, end))
            ::operator delete(block); // NOLINT(clang-analyzer-cplusplus.NewDelete): not a block of the room
    }

private:
    alignas(std::max_align_t) std::array<std::byte, Size> m_room;
    std::size_t m_used = 0;
};

/// The allocator over an `Arena`, which must outlive what is allocated.
template <typename T, typename Arena>
class StackAllocator
{
public:
    static_assert(alignof(T) <= alignof(std::max_align_t));

    using value_type = T;

    explicit StackAllocator(Arena& arena) noexcept
        : m_arena(&arena)
    {
    }
    template <typename Other>
    explicit(false) StackAllocator(const StackAllocator<Other, Arena>& other) noexcept
        : m_arena(other.m_arena)
    {
    }

    T* allocate(std::size_t count) { return static_cast<T*>(m_arena->allocate(count * sizeof(T))); }
    void deallocate(T* block, std::size_t /*count*/) noexcept { m_arena->deallocate(block); }

    friend bool operator==(const StackAllocator&, const StackAllocator&) = default;

private:
    template <typename Other, typename OtherArena>
    friend class StackAllocator;

    Arena* m_arena;
};

} // namespace tov::devices::service

#include "service/support/stackarena.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace tov::testing {

namespace {

template <std::size_t Size>
bool isInside(const devices::service::StackArena<Size>& arena, const void* block)
{
    const auto begin = reinterpret_cast<std::uintptr_t>(&arena);
    const auto address = reinterpret_cast<std::uintptr_t>(block);
    return address >= begin && address < begin + sizeof arena;
}

} // namespace

TEST(StackArena, GivesAlignedBlocksOfItsOwnRoomWhileTheyFit)
{
    devices::service::StackArena<64> arena;
    void* const first = arena.allocate(1);
    void* const second = arena.allocate(48);
    for (void* const block : {first, second}) {
        EXPECT_TRUE(isInside(arena, block));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t), 0U);
    }
    EXPECT_NE(first, second);

    void* const third = arena.allocate(1);
    EXPECT_FALSE(isInside(arena, third)) << "there is no room left";
    arena.deallocate(third);
    arena.deallocate(second);
    arena.deallocate(first);
}

TEST(StackArena, GivesLargerBlocksFromTheHeap)
{
    devices::service::StackArena<64> arena;
    for (const std::size_t size : {65U, 1000U}) {
        void* const block = arena.allocate(size);
        EXPECT_FALSE(isInside(arena, block));
        arena.deallocate(block);
    }
    EXPECT_TRUE(isInside(arena, arena.allocate(64)));
}

TEST(StackArena, ServesAContainerThatGrowsOutOfIt)
{
    using Arena = devices::service::StackArena<64>;
    using Allocator = devices::service::StackAllocator<int, Arena>;
    Arena arena;
    std::vector<int, Allocator> numbers{Allocator(arena)};
    for (int i = 0; i < 100; ++i)
        numbers.push_back(i);
    EXPECT_EQ(numbers.back(), 99);
}

} // namespace tov::testing

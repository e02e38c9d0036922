#include "devices/reacquiringcontrol.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <thread>
#include <utility>

namespace tov::testing {

namespace {

/// Stands for a control; only its life matters here.
struct Control
{
};

using Reacquiring = devices::ReacquiringControl<Control>;
using Handle = sdk::ControlHandle<Control>;

/// An instrument with one control, which counts how often it is asked.
class ReacquiringControl : public ::testing::Test
{
protected:
    std::shared_ptr<Control> offered = std::make_shared<Control>();
    int asked = 0;

    Reacquiring::Reacquire reacquire = [this] {
        ++asked;
        return Handle(offered);
    };
};

/// Allocates the control and its counters in one block and counts the blocks that exist. The block goes
/// with the last weak reference, so this shows when a handle is dropped.
template <typename T>
struct CountingAllocator
{
    using value_type = T;

    explicit CountingAllocator(int& counter)
        : blocks(&counter)
    {
    }
    template <typename U>
    explicit(false) CountingAllocator(const CountingAllocator<U>& other)
        : blocks(other.blocks)
    {
    }

    T* allocate(std::size_t count)
    {
        ++*blocks;
        return std::allocator<T>().allocate(count);
    }
    void deallocate(T* block, std::size_t count)
    {
        --*blocks;
        std::allocator<T>().deallocate(block, count);
    }
    friend bool operator==(const CountingAllocator&, const CountingAllocator&) = default;

    int* blocks;
};

} // namespace

TEST_F(ReacquiringControl, AsksOnceWhenItIsMade)
{
    const Reacquiring control(reacquire);

    EXPECT_EQ(asked, 1);
    EXPECT_EQ(control.lock().control, offered.get());
    EXPECT_EQ(asked, 1);
}

TEST_F(ReacquiringControl, StoresACopyOfTheFunction)
{
    const Reacquiring control(reacquire);
    EXPECT_TRUE(reacquire);
    reacquire = nullptr;
    offered = std::make_shared<Control>();
    EXPECT_TRUE(control.lock());
}

TEST_F(ReacquiringControl, HoldsNoStrongReference)
{
    const Reacquiring control(reacquire);
    EXPECT_EQ(offered.use_count(), 1);
    control.lock();
    EXPECT_EQ(offered.use_count(), 1);
}

TEST_F(ReacquiringControl, NeverAsksWhileTheControlLives)
{
    const Reacquiring control(reacquire);
    for (int i = 0; i < 1000; ++i)
        EXPECT_TRUE(control.lock());
    EXPECT_EQ(asked, 1);
}

TEST_F(ReacquiringControl, StaysAbsentWithoutAFunction)
{
    const Reacquiring control(nullptr);
    EXPECT_FALSE(control.lock());
    EXPECT_FALSE(control.lock());
}

TEST_F(ReacquiringControl, AsksOnceForTheNextControlWhenTheLastIsGone)
{
    const Reacquiring control(reacquire);
    offered = std::make_shared<Control>();

    EXPECT_EQ(control.lock().control, offered.get());
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(control.lock().control, offered.get());
    EXPECT_EQ(asked, 2);
}

TEST_F(ReacquiringControl, AsksAtEveryLockWhileNothingIsOffered)
{
    const Reacquiring control(reacquire);
    offered.reset();

    EXPECT_FALSE(control.lock());
    EXPECT_FALSE(control.lock());
    EXPECT_EQ(asked, 3);

    offered = std::make_shared<Control>();
    EXPECT_TRUE(control.lock());
    EXPECT_TRUE(control.lock());
    EXPECT_EQ(asked, 4);
}

TEST_F(ReacquiringControl, AsksAgainWhenItWasGivenAnExpiredHandle)
{
    const Reacquiring control([this] {
        ++asked;
        return Handle(std::make_shared<Control>());
    });

    EXPECT_FALSE(control.lock());
    EXPECT_FALSE(control.lock());
    EXPECT_EQ(asked, 3);
}

TEST_F(ReacquiringControl, KeepsTheControlAliveWhileItIsLocked)
{
    const Reacquiring control(reacquire);
    const std::weak_ptr<Control> observed = offered;
    {
        const auto locked = control.lock();
        offered.reset();
        EXPECT_FALSE(observed.expired());
        EXPECT_EQ(control.lock().control, locked.control);
        EXPECT_EQ(asked, 1);
    }
    EXPECT_TRUE(observed.expired());
}

TEST_F(ReacquiringControl, ReplacesItsHandleEvenByAnEmptyOne)
{
    int blocks = 0;
    offered = std::allocate_shared<Control>(CountingAllocator<Control>(blocks));
    const Reacquiring control(reacquire);
    offered.reset();
    ASSERT_EQ(blocks, 1) << "the handle still refers to the control that is gone";

    EXPECT_FALSE(control.lock());
    EXPECT_EQ(blocks, 0);
}

TEST_F(ReacquiringControl, KeepsItsHandleWhenAskingThrows)
{
    int blocks = 0;
    offered = std::allocate_shared<Control>(CountingAllocator<Control>(blocks));
    bool fails = false;
    const Reacquiring control([&] {
        if (fails)
            throw std::runtime_error("the instrument failed");
        return Handle(offered);
    });
    offered.reset();
    fails = true;

    EXPECT_THROW(control.lock(), std::runtime_error);
    EXPECT_EQ(blocks, 1);

    fails = false;
    offered = std::make_shared<Control>();
    EXPECT_TRUE(control.lock());
    EXPECT_EQ(blocks, 0);
}

TEST_F(ReacquiringControl, PassesOnWhatTheFirstAskingThrows)
{
    EXPECT_THROW(Reacquiring([]() -> Handle { throw std::runtime_error("the instrument failed"); }),
                 std::runtime_error);
}

TEST_F(ReacquiringControl, HoldsNoLockWhileItAsks)
{
    const Reacquiring* self = nullptr;
    const Reacquiring control([&] {
        if (self != nullptr) {
            // A copy takes the lock, here on another thread: if it were held, this would hang.
            std::jthread([&] { const Reacquiring copy(*self); }).join();
        }
        return Handle(offered);
    });
    offered = nullptr;
    self = &control;

    EXPECT_FALSE(control.lock());
}

TEST_F(ReacquiringControl, CopiesFunctionAndHandle)
{
    const Reacquiring control(reacquire);
    const Reacquiring copy(control);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(copy.lock().control, offered.get());
    EXPECT_EQ(asked, 1);

    offered = std::make_shared<Control>();
    EXPECT_EQ(copy.lock().control, offered.get());
    EXPECT_EQ(control.lock().control, offered.get());
    EXPECT_EQ(asked, 3) << "each has a handle of its own";
}

TEST_F(ReacquiringControl, MovesTheFunctionButCopiesTheHandle)
{
    Reacquiring source(reacquire);
    const Reacquiring target(std::move(source));
    EXPECT_EQ(asked, 1);

    // NOLINTBEGIN(bugprone-use-after-move): what a moved-from object still does
    EXPECT_EQ(source.lock().control, offered.get());
    EXPECT_EQ(target.lock().control, offered.get());

    offered = std::make_shared<Control>();
    EXPECT_FALSE(source.lock());
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(target.lock().control, offered.get());
    EXPECT_EQ(asked, 2);
    // NOLINTEND(bugprone-use-after-move)
}

} // namespace tov::testing

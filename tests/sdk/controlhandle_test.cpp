#include "sdk/controlhandle.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace tov::testing {

using Handle = sdk::ControlHandle<int>;

TEST(ControlHandle, IsEmptyByDefault)
{
    const Handle handle;
    const auto locked = handle.lock();

    EXPECT_FALSE(locked);
    EXPECT_EQ(locked.keepAlive, nullptr);
    EXPECT_EQ(locked.control, nullptr);
}

TEST(ControlHandle, DoesNotKeepTheControlAlive)
{
    auto control = std::make_shared<int>(7);
    const Handle handle(control);
    const Handle copy(handle); // NOLINT(performance-unnecessary-copy-initialization): counted below

    EXPECT_EQ(control.use_count(), 1);
    control.reset();
    EXPECT_FALSE(handle.lock());
    EXPECT_FALSE(copy.lock());
}

TEST(ControlHandle, LendsTheControlThroughBothFields)
{
    const auto control = std::make_shared<int>(7);
    const auto [keepAlive, pointer] = Handle(control).lock();

    EXPECT_EQ(keepAlive, control);
    EXPECT_EQ(pointer, control.get());
}

TEST(ControlHandle, KeepsTheControlAliveWhileItIsLocked)
{
    auto control = std::make_shared<int>(7);
    const Handle handle(control);
    {
        const auto locked = handle.lock();
        control.reset();
        ASSERT_TRUE(locked);
        EXPECT_EQ(*locked, 7);
        EXPECT_EQ(locked.keepAlive.use_count(), 1);
    }
    EXPECT_FALSE(handle.lock());
}

TEST(ControlHandle, GivesAWhollyEmptyValueForAnOwnerOfNothing)
{
    const auto owner = std::make_shared<int>(7);
    const std::shared_ptr<int> nothing(owner, nullptr);
    const auto locked = Handle(nothing).lock();

    EXPECT_FALSE(locked);
    EXPECT_EQ(locked.keepAlive.use_count(), 0);
}

TEST(ControlHandle, LeavesALockedValueEmptyWhenItIsMovedFrom)
{
    const auto control = std::make_shared<int>(7);
    auto first = Handle(control).lock();
    auto second = std::move(first);
    EXPECT_FALSE(first); // NOLINT(bugprone-use-after-move): what a moved-from value is
    EXPECT_TRUE(second);

    first = std::move(second);
    EXPECT_TRUE(first);
    EXPECT_FALSE(second); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(control.use_count(), 2);
}

} // namespace tov::testing

#include "service/memory/sdkpotentiometerscontrol.h"
#include "testing/fakepotentiometerscontrol.h"

#include <gmock/gmock.h>

#include <memory>

namespace tov::testing {

namespace {

using devices::service::SdkPotentiometersControl;
using sdk::service::IPotentiometersControl;

class SdkPotentiometers : public ::testing::Test
{
protected:
    std::shared_ptr<FakePotentiometersControl> fake = std::make_shared<FakePotentiometersControl>();
    SdkPotentiometersControl potentiometers{devices::ReacquiringControl<IPotentiometersControl>(
        [this] { return sdk::ControlHandle<IPotentiometersControl>(fake); })};
};

} // namespace

TEST_F(SdkPotentiometers, ListsThemInTheOrderOfTheInstrument)
{
    fake->answer("potentiometers", std::vector<IPotentiometersControl::PotentiometerInfo>{
                                       {"b", -1, 2147483647}, {"a", 3, -2147483647 - 1}, {"", 0, 0}});

    const auto list = potentiometers.potentiometers();
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list.capacity(), 3U);
    EXPECT_EQ(list[0].name, "b");
    EXPECT_EQ(list[0].word1, -1);
    EXPECT_EQ(list[0].word2, 2147483647);
    EXPECT_EQ(list[1].name, "a");
    EXPECT_EQ(list[1].word2, -2147483647 - 1);
    EXPECT_EQ(list[2].name, "");
}

TEST_F(SdkPotentiometers, ListsNoneWhenTheControlIsAbsent)
{
    fake.reset();
    EXPECT_TRUE(potentiometers.potentiometers().empty());
}

TEST_F(SdkPotentiometers, ReachesTheSameControlThroughACopy)
{
    SdkPotentiometersControl copy(potentiometers);
    EXPECT_TRUE(copy.writeToRam(1, 2));
    SdkPotentiometersControl moved(std::move(copy));
    EXPECT_TRUE(moved.writeToRam(3, 4));
    EXPECT_THAT(fake->calls(), ::testing::ElementsAre("writeToRam(1, 2)", "writeToRam(3, 4)"));
}

TEST_F(SdkPotentiometers, FindsANewControlAlsoAfterItWasMovedFrom)
{
    const SdkPotentiometersControl moved(std::move(potentiometers));
    fake = std::make_shared<FakePotentiometersControl>();
    EXPECT_TRUE(potentiometers.writeToRam(1, 2)); // NOLINT(bugprone-use-after-move): what is tried here
    EXPECT_THAT(fake->calls(), ::testing::ElementsAre("writeToRam(1, 2)"));
}

} // namespace tov::testing

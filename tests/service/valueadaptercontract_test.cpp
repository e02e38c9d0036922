#include "service/valueadaptercontract.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace tov::testing {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_P(ValueAdapter, MakesOneSdkCallWithUnchangedArgumentsAndConvertsItsAnswer)
{
    stage->offer();

    EXPECT_EQ(stage->call(), operation.whenPresent);
    EXPECT_THAT(stage->control().calls(), ElementsAre(operation.sdkCall));
}

TEST_P(ValueAdapter, GivesItsDefaultAndCallsNothingWhenTheControlIsAbsent)
{
    stage->withhold();

    EXPECT_EQ(stage->call(), operation.whenAbsent);
    EXPECT_EQ(stage->callWithEmptyReacquire(), operation.whenAbsent);
    EXPECT_THAT(stage->control().calls(), IsEmpty());
}

TEST_P(ValueAdapter, GivesItsDefaultAfterTheControlWasReleased)
{
    stage->offer();
    stage->call();
    stage->release();

    EXPECT_FALSE(stage->controlLives());
    EXPECT_EQ(stage->call(), operation.whenAbsent);
}

TEST_P(ValueAdapter, ReachesTheControlThatIsOfferedAfterARelease)
{
    stage->offer();
    stage->call();
    stage->release();
    stage->call();
    stage->offer();

    EXPECT_EQ(stage->call(), operation.whenPresent);
    EXPECT_THAT(stage->control().calls(), ElementsAre(operation.sdkCall));
}

TEST_P(ValueAdapter, ReachesTheSameControlThroughACopy)
{
    stage->offer();

    EXPECT_EQ(stage->callOnCopy(), operation.whenPresent);
    EXPECT_THAT(stage->control().calls(), ElementsAre(operation.sdkCall));
}

TEST_P(ValueAdapter, StillFindsItsControlAfterItWasMovedFrom)
{
    stage->offer();
    EXPECT_EQ(stage->callAfterMovingFrom(), operation.whenPresent);

    stage->release();
    stage->offer();
    EXPECT_EQ(stage->call(), operation.whenPresent);
}

TEST_P(ValueAdapter, KeepsTheControlAliveForTheCallAndNoLonger)
{
    stage->offer();
    bool livesDuringCall = false;
    stage->control().duringCall = [&] {
        stage->release();
        livesDuringCall = stage->controlLives();
    };

    EXPECT_EQ(stage->call(), operation.whenPresent);
    EXPECT_TRUE(livesDuringCall);
    EXPECT_FALSE(stage->controlLives());
}

TEST_P(ValueAdapter, PassesOnWhatTheSdkThrowsAndLetsGoOfTheControl)
{
    stage->offer();
    stage->control().duringCall = [] { throw std::runtime_error("the instrument failed"); };

    EXPECT_THROW(stage->call(), std::runtime_error);
    EXPECT_THAT(stage->control().calls(), ElementsAre(operation.sdkCall));
    stage->release();
    EXPECT_FALSE(stage->controlLives());
}

} // namespace tov::testing

#include "service/valueadaptercontract.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace tov::testing {

using ::testing::ElementsAreArray;

TEST_P(ValueAdapter, MakesOneSdkCallWithUnchangedArgumentsAndConvertsItsAnswer)
{
    stage->offer();

    EXPECT_EQ(stage->call(), operation.whenPresent);
    EXPECT_THAT(stage->calls(), ElementsAreArray(operation.sdkCalls));
}

TEST_P(ValueAdapter, GivesItsDefaultWhenTheControlWasNeverThere)
{
    EXPECT_EQ(stage->call(), operation.whenAbsent);
    EXPECT_EQ(stage->callWithEmptyReacquire(), operation.whenAbsent);
}

TEST_P(ValueAdapter, GivesItsDefaultAndCallsNothingAfterTheControlWasReleased)
{
    stage->offer();
    stage->call();
    stage->release();

    EXPECT_FALSE(stage->controlLives());
    EXPECT_EQ(stage->call(), operation.whenAbsent);
    EXPECT_THAT(stage->calls(), ElementsAreArray(operation.sdkCalls)) << "the call before the release";
}

TEST_P(ValueAdapter, ReachesTheControlThatIsOfferedAfterARelease)
{
    stage->offer();
    stage->release();
    stage->call();
    stage->offer();

    EXPECT_EQ(stage->call(), operation.whenPresent);
    EXPECT_THAT(stage->calls(), ElementsAreArray(operation.sdkCalls));
}

TEST_P(ValueAdapter, ReachesTheSameControlThroughACopy)
{
    stage->offer();
    stage->call();

    EXPECT_EQ(stage->callOnCopy(), operation.whenPresent);
    auto twice = operation.sdkCalls;
    twice.insert(twice.end(), operation.sdkCalls.begin(), operation.sdkCalls.end());
    EXPECT_THAT(stage->calls(), ElementsAreArray(twice));
}

TEST_P(ValueAdapter, StillFindsItsControlAfterItWasMovedFrom)
{
    stage->offer();
    EXPECT_EQ(stage->callOnMovedTo(), operation.whenPresent);
    EXPECT_EQ(stage->call(), operation.whenPresent);

    stage->release();
    stage->offer();
    EXPECT_EQ(stage->call(), operation.whenPresent) << "a new control is found too";
}

TEST_P(ValueAdapter, KeepsTheControlAliveForTheCallAndNoLonger)
{
    stage->offer();
    bool livesDuringCall = false;
    stage->duringCall([&] {
        stage->release();
        livesDuringCall = stage->controlLives();
    });

    EXPECT_EQ(stage->call(), operation.whenPresent);
    EXPECT_TRUE(livesDuringCall);
    EXPECT_FALSE(stage->controlLives());
}

TEST_P(ValueAdapter, PassesOnWhatTheSdkThrowsAndLetsGoOfTheControl)
{
    stage->offer();
    stage->duringCall([] { throw std::runtime_error("the instrument failed"); });

    EXPECT_THROW(stage->call(), std::runtime_error);
    EXPECT_THAT(stage->calls(), ElementsAreArray(operation.sdkCalls));
    stage->release();
    EXPECT_FALSE(stage->controlLives());
}

} // namespace tov::testing

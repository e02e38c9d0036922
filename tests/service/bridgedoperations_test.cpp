// What holds for every operation that waits for an answer.

#include "homemadecategory.h"
#include "operations/operations.h"
#include "rendezvous.h"
#include "service/valueadaptercontract.h"
#include "sleepingthread.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cstdlib>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#ifdef __linux__
#include <unistd.h>
#endif

namespace tov::testing {

namespace {

using ::testing::Each;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// Those that wait for an answer.
Operations bridgedOperations()
{
    Operations bridged = allOperations();
    std::erase_if(bridged, [](const Operation& operation) { return operation.tells == Tells::Nothing; });
    return bridged;
}

class BridgedOperation : public ::testing::TestWithParam<Operation>
{
protected:
    const Operation& bridged = GetParam();
    std::unique_ptr<Stage> stage = bridged.makeStage();

    void SetUp() override { stage->offer(); }
};

using When = AnsweringControl::When;

} // namespace

TEST_P(BridgedOperation, GivesWhatIsAnsweredAtOnce)
{
    EXPECT_EQ(stage->call(), bridged.whenPresent);
    EXPECT_THAT(stage->calls(), ElementsAreArray(bridged.sdkCalls));
}

TEST_P(BridgedOperation, GivesWhatIsAnsweredLaterByAnotherThread)
{
    stage->answering()->when = When::Later;
    EXPECT_EQ(stage->call(), bridged.whenPresent);
    EXPECT_THAT(stage->calls(), ElementsAreArray(bridged.sdkCalls));
}

TEST_P(BridgedOperation, FailsForEveryNumberBut0OfAnyCategory)
{
    const std::error_code errors[] = {std::make_error_code(std::errc::io_error),
                                      {ENOENT, std::system_category()},
                                      {42, homeMade()},
                                      {-1, homeMade()}};
    for (const When when : {When::AtOnce, When::Later})
        for (const std::error_code& error : errors) {
            stage->answering()->when = when;
            stage->answering()->error = error;
            EXPECT_EQ(stage->call(), bridged.whenAnswered(error)) << error;
        }
}

TEST_P(BridgedOperation, SucceedsForTheNumber0OfAnyCategory)
{
    for (const std::error_category* category : {&homeMade(), &std::generic_category()}) {
        stage->answering()->error = {0, *category};
        EXPECT_EQ(stage->call(), bridged.whenPresent) << category->name();
    }
}

TEST_P(BridgedOperation, FailsWithoutACallWhenTheControlIsAbsent)
{
    const auto journal = std::make_shared<Journal>();
    stage->answering()->recordInto(journal);
    stage->call();
    stage->release();
    ASSERT_FALSE(stage->controlLives());

    EXPECT_EQ(stage->call(), bridged.whenAbsent);
    EXPECT_THAT(journal->calls(), SizeIs(1)) << "the call before the release";
}

TEST_P(BridgedOperation, PassesOnWhatTheSdkThrowsAndLetsGoOfTheControl)
{
    stage->answering()->duringCall = [] { throw std::runtime_error("the instrument failed"); };
    EXPECT_THROW(stage->call(), std::runtime_error);
    stage->release();
    EXPECT_FALSE(stage->controlLives());
}

TEST_P(BridgedOperation, CompletesWithTheControlThatIsTakenAwayWhileItWaits)
{
    bool livesWhenItAnswers = false;
    stage->answering()->when = When::Later;
    stage->answering()->beforeAnswer = [&] {
        stage->release();
        livesWhenItAnswers = stage->controlLives();
    };

    EXPECT_EQ(stage->call(), bridged.whenPresent);
    EXPECT_TRUE(livesWhenItAnswers);
    EXPECT_FALSE(stage->controlLives());
}

TEST_P(BridgedOperation, MakesASecondAnswerFailInTheAnsweringThread)
{
    stage->answering()->when = When::TwiceByThread;
    EXPECT_EQ(stage->call(), bridged.whenPresent);
    EXPECT_EQ(*stage->answering()->secondAnswer, std::make_error_code(std::future_errc::promise_already_satisfied));
}

TEST_P(BridgedOperation, ServesSeveralThreadsAtOnce)
{
    constexpr int threads = 4;
    Rendezvous allWait(threads);
    stage->answering()->when = When::Later;
    stage->answering()->beforeAnswer = [&] { allWait.arriveAndWait(); };
    std::atomic<int> right = 0;
    {
        std::vector<std::jthread> callers;
        for (int i = 0; i < threads; ++i)
            callers.emplace_back([&] {
                for (int round = 0; round < 25; ++round)
                    right += stage->call() == bridged.whenPresent ? 1 : 0;
            });
    }
    EXPECT_EQ(right, 100);
    EXPECT_THAT(stage->calls(), SizeIs(100));
    EXPECT_THAT(stage->calls(), Each(bridged.sdkCalls.front()));
}

INSTANTIATE_TEST_SUITE_P(, BridgedOperation, ::testing::ValuesIn(bridgedOperations()), operationName);

#ifdef __linux__
// A caller whose answer never comes waits without a time limit. In a process of its own, which ends with 42 as
// soon as its main thread sleeps in the kernel on a futex without a time-out, and with 0 when the call returns.
TEST(BridgedOperationDeathTest, WaitsForEverWhenItIsNotAnswered)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto callUnanswered = [] {
        const auto stage = bridgedOperations().front().makeStage();
        stage->offer();
        stage->answering()->when = When::Never;
        stage->answering()->duringCall = [] {
            std::thread([caller = "/proc/self/task/" + std::to_string(getpid())] {
                for (;;)
                    if (sleepsForEver(caller))
                        std::_Exit(42);
            }).detach();
        };
        stage->call();
        std::_Exit(0);
    };
    EXPECT_EXIT(callUnanswered(), ::testing::ExitedWithCode(42), "");
}
#endif

} // namespace tov::testing

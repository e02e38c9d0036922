// What the two calibrations of the Yq module share: their observers and their frequency plan.

#include "service/calibration/calibrations.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

namespace tov::testing {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

template <typename Calibration>
class SdkCalibration : public ::testing::Test
{
protected:
    using SdkIface = typename Calibration::SdkIface;
    using Fake = typename Calibration::Fake;

    std::shared_ptr<Fake> fake = std::make_shared<Fake>();
    StoryOfCalibration<Calibration> observer;
    typename Calibration::Adapter calibration{
        devices::ReacquiringControl<SdkIface>([this] { return sdk::ControlHandle<SdkIface>(fake); })};
};

TYPED_TEST_SUITE(SdkCalibration, Calibrations, CalibrationName);

} // namespace

TYPED_TEST(SdkCalibration, GivesThePlanWithItsPointsAt32Bits)
{
    this->fake->answer("frequencyPlan", sdk::FrequencyPlan{{{3.0, 1.0, -1}, {0.0, 0.0, 2'147'483'647}, {1.0, 2.0, 0}}});
    const auto plan = this->calibration.frequencyPlan();
    ASSERT_THAT(plan.segments, SizeIs(3));
    EXPECT_EQ(plan.segments.capacity(), 3U);
    EXPECT_EQ(plan.segments[0].start, 3.0);
    EXPECT_EQ(plan.segments[0].stop, 1.0);
    EXPECT_EQ(plan.segments[0].points, -1);
    EXPECT_EQ(plan.segments[1].points, 2'147'483'647);
    EXPECT_EQ(plan.segments[2].stop, 2.0);
    static_assert(std::is_same_v<decltype(plan.segments[0].points), std::int32_t>);
}

TYPED_TEST(SdkCalibration, GivesAnEmptyPlanWhenTheControlIsAbsent)
{
    const auto journal = std::make_shared<Journal>();
    this->fake->recordInto(journal);
    this->fake->answer("frequencyPlan", sdk::FrequencyPlan{{{1.0, 2.0, 3}}});
    this->fake.reset();
    EXPECT_THAT(this->calibration.frequencyPlan().segments, IsEmpty());
    EXPECT_THAT(journal->calls(), IsEmpty());
}

TYPED_TEST(SdkCalibration, RegistersAnObserverOnceHoweverOftenItIsAdded)
{
    this->calibration.addObserver(nullptr);
    this->calibration.addObserver(&this->observer);
    this->calibration.addObserver(&this->observer);
    EXPECT_THAT(this->fake->observers(), SizeIs(1));
    this->calibration.removeObserver(&this->observer);
    this->calibration.removeObserver(&this->observer);
    this->calibration.removeObserver(nullptr);
    EXPECT_THAT(this->fake->observers(), IsEmpty());
    EXPECT_THAT(this->fake->calls(), ElementsAre("addObserver()", "removeObserver()"));
}

TYPED_TEST(SdkCalibration, RelaysNotificationsOneForOneAndFoldsUnknownStatesInto0)
{
    this->calibration.addObserver(&this->observer);
    auto* const adapter = this->fake->observers().front();
    adapter->onThirdEvent();
    adapter->onFirstEvent();
    adapter->onSecondEvent();
    EXPECT_THAT(this->observer.story, ElementsAre("third", "first", "second"));

    for (int state = -2; state <= 300; ++state) {
        this->observer.story.clear();
        adapter->onStateChanged(state);
        EXPECT_THAT(this->observer.story, ElementsAre("state " + std::to_string(state >= 1 && state <= 3 ? state : 0)));
    }
}

TYPED_TEST(SdkCalibration, TellsEachObserverThroughAnAdapterOfItsOwn)
{
    StoryOfCalibration<TypeParam> second;
    this->calibration.addObserver(&this->observer);
    this->calibration.addObserver(&second);
    ASSERT_THAT(this->fake->observers(), SizeIs(2));
    this->fake->observers().front()->onFirstEvent();
    EXPECT_THAT(this->observer.story, SizeIs(1));
    EXPECT_THAT(second.story, IsEmpty());
}

TYPED_TEST(SdkCalibration, AttachesWhoWaitedOnceHoweverOftenTheControlsAreAvailable)
{
    this->fake.reset();
    this->calibration.addObserver(&this->observer);
    this->calibration.onControlsAvailable();
    this->calibration.onControlsAboutToBeReleased();

    this->fake = std::make_shared<typename TypeParam::Fake>();
    this->calibration.onControlsAvailable();
    this->calibration.onControlsAvailable();
    EXPECT_THAT(this->fake->calls(), ElementsAre("addObserver()"));
    EXPECT_THAT(this->observer.story, IsEmpty()) << "becoming available tells nothing";
}

TYPED_TEST(SdkCalibration, DetachesEachAdapterOnceHoweverOftenTheControlsAreReleased)
{
    StoryOfCalibration<TypeParam> second;
    this->calibration.addObserver(&this->observer);
    this->calibration.addObserver(&second);
    this->calibration.onControlsAboutToBeReleased();
    this->calibration.onControlsAboutToBeReleased();
    EXPECT_THAT(this->fake->calls(),
                ElementsAre("addObserver()", "addObserver()", "removeObserver()", "removeObserver()"));

    this->fake = std::make_shared<typename TypeParam::Fake>();
    this->calibration.onControlsAvailable();
    EXPECT_THAT(this->fake->observers(), SizeIs(2));
    this->fake->observers().front()->onFirstEvent();
    this->fake->observers().back()->onFirstEvent();
    EXPECT_THAT(this->observer.story, SizeIs(1));
    EXPECT_THAT(second.story, SizeIs(1));
}

TYPED_TEST(SdkCalibration, RemovesAnObserverAlsoWhileTheControlIsAbsent)
{
    this->calibration.addObserver(&this->observer);
    this->calibration.onControlsAboutToBeReleased();
    this->fake.reset();
    this->calibration.removeObserver(&this->observer);

    this->fake = std::make_shared<typename TypeParam::Fake>();
    this->calibration.onControlsAvailable();
    EXPECT_THAT(this->fake->calls(), IsEmpty());
}

TYPED_TEST(SdkCalibration, TellsTheSdkOfARemovalWhateverItsStateIs)
{
    this->calibration.addObserver(&this->observer);
    this->calibration.onControlsAboutToBeReleased();
    this->calibration.removeObserver(&this->observer);
    EXPECT_THAT(this->fake->calls(), ElementsAre("addObserver()", "removeObserver()", "removeObserver()"));
}

TYPED_TEST(SdkCalibration, LeavesTheSdkAloneWhenDestroyed)
{
    {
        typename TypeParam::Adapter other{devices::ReacquiringControl<typename TypeParam::SdkIface>(
            [this] { return sdk::ControlHandle<typename TypeParam::SdkIface>(this->fake); })};
        other.addObserver(&this->observer);
    }
    EXPECT_THAT(this->fake->calls(), ElementsAre("addObserver()"));
}

TYPED_TEST(SdkCalibration, LetsTheSdkCallBackWhileItRegisters)
{
    StoryOfCalibration<TypeParam> second;
    this->fake->duringCall = [&] {
        this->fake->duringCall = nullptr;
        this->calibration.addObserver(&second);
        this->calibration.onControlsAvailable();
    };
    this->calibration.addObserver(&this->observer);
    EXPECT_THAT(this->fake->calls(), ElementsAre("addObserver()", "addObserver()"));
    EXPECT_THAT(this->fake->observers(), SizeIs(2));
    EXPECT_NE(this->fake->observers().front(), this->fake->observers().back());
}

TYPED_TEST(SdkCalibration, ReleasesAndOffersAtOnceWhileTheSdkRegistersOrLetsGo)
{
    int hooks = 0;
    const auto announceBothOnce = [&] {
        if (++hooks != 2) // when the SDK has done it
            return;
        const std::size_t before = this->fake->calls().size();
        this->calibration.onControlsAboutToBeReleased();
        this->calibration.onControlsAvailable();
        EXPECT_GT(this->fake->calls().size(), before) << "nothing is put off";
    };
    this->fake->aroundRegistration = announceBothOnce;
    this->calibration.addObserver(&this->observer);
    EXPECT_THAT(this->fake->calls(), ElementsAre("addObserver()", "removeObserver()", "addObserver()"));
    EXPECT_THAT(this->fake->observers(), SizeIs(1));

    hooks = 0;
    this->calibration.onControlsAboutToBeReleased();
    EXPECT_THAT(this->fake->calls(),
                ElementsAre("addObserver()", "removeObserver()", "addObserver()", "removeObserver()", "addObserver()"));
    EXPECT_THAT(this->fake->observers(), SizeIs(1)) << "they were announced last";
    this->calibration.onControlsAboutToBeReleased();
    EXPECT_THAT(this->fake->observers(), IsEmpty());
}

TYPED_TEST(SdkCalibration, WalksOverTheControlThatWasThereWhenItWasTold)
{
    StoryOfCalibration<TypeParam> second;
    this->calibration.addObserver(&this->observer);
    this->calibration.addObserver(&second);
    this->calibration.onControlsAboutToBeReleased();

    const auto old = std::weak_ptr(this->fake);
    const auto journal = std::make_shared<Journal>();
    this->fake->recordInto(journal);
    this->fake->duringCall = [&, journal] {
        if (journal->calls().size() == 1)
            this->fake = std::make_shared<typename TypeParam::Fake>();
    };
    this->calibration.onControlsAvailable();
    EXPECT_THAT(journal->calls(), ElementsAre("addObserver()", "addObserver()"));
    EXPECT_TRUE(old.expired());
    EXPECT_THAT(this->fake->calls(), IsEmpty());
}

TYPED_TEST(SdkCalibration, DoesNotAttachWhomTheSdkRemovedBeforeItsTurn)
{
    std::vector<StoryOfCalibration<TypeParam>> observers(3);
    for (auto& each : observers)
        this->calibration.addObserver(&each);
    this->calibration.onControlsAboutToBeReleased();
    this->fake = std::make_shared<typename TypeParam::Fake>();
    this->fake->duringCall = [&] {
        this->fake->duringCall = nullptr;
        for (auto& each : observers)
            this->calibration.removeObserver(&each);
    };
    this->calibration.onControlsAvailable();
    this->fake->duringCall = nullptr;
    for (auto* const attached : this->fake->observers())
        EXPECT_EQ(attached, this->fake->observers().front()) << "only the one whose turn it was";
}

TYPED_TEST(SdkCalibration, LeavesWhomTheSdkAddsWhileItLetsGoOfOthers)
{
    StoryOfCalibration<TypeParam> late;
    this->calibration.addObserver(&this->observer);
    this->fake->duringCall = [&] {
        this->fake->duringCall = nullptr;
        this->calibration.addObserver(&late);
    };
    this->calibration.onControlsAboutToBeReleased();
    ASSERT_THAT(this->fake->observers(), SizeIs(1));
    this->fake->observers().front()->onFirstEvent();
    EXPECT_THAT(late.story, ElementsAre("first"));
}

TYPED_TEST(SdkCalibration, RelaysWhatTheSdkTellsWhileItLetsGo)
{
    this->calibration.addObserver(&this->observer);
    auto* const adapter = this->fake->observers().front();
    this->fake->duringCall = [&] { adapter->onSecondEvent(); };
    this->calibration.removeObserver(&this->observer);
    EXPECT_THAT(this->observer.story, ElementsAre("second"));
}

TYPED_TEST(SdkCalibration, LetsAnObserverRemoveItselfWhileTheSdkRegistersIt)
{
    int calls = 0;
    this->fake->aroundRegistration = [&] {
        if (++calls == 2) {
            this->calibration.removeObserver(&this->observer);
            ASSERT_THAT(this->fake->observers(), IsEmpty());
        }
    };
    this->calibration.addObserver(&this->observer);
    EXPECT_THAT(this->fake->observers(), IsEmpty());
    this->fake->aroundRegistration = [] {};

    this->calibration.addObserver(&this->observer);
    EXPECT_THAT(this->fake->observers(), SizeIs(1));
    this->calibration.removeObserver(&this->observer);
}

TYPED_TEST(SdkCalibration, KeepsAnObserverThatTheSdkRefusedUntilTheControlsComeBack)
{
    this->fake->duringCall = [] { throw std::runtime_error("the instrument failed"); };
    EXPECT_THROW(this->calibration.addObserver(&this->observer), std::runtime_error);
    EXPECT_EQ(this->fake.use_count(), 1);

    this->fake->duringCall = nullptr;
    this->calibration.onControlsAboutToBeReleased();
    this->calibration.onControlsAvailable();
    EXPECT_THAT(this->fake->observers(), SizeIs(1));
    this->calibration.removeObserver(&this->observer);
    EXPECT_THAT(this->fake->observers(), IsEmpty());
}

TYPED_TEST(SdkCalibration, ForgetsAnObserverAlsoWhenItsRemovalThrows)
{
    this->calibration.addObserver(&this->observer);
    int hooks = 0;
    this->fake->aroundRegistration = [&] {
        if (++hooks == 2) // when it has let go
            throw std::runtime_error("the instrument failed");
    };
    EXPECT_THROW(this->calibration.removeObserver(&this->observer), std::runtime_error);
    ASSERT_THAT(this->fake->observers(), IsEmpty());
    this->calibration.onControlsAboutToBeReleased();
    this->calibration.onControlsAvailable();
    EXPECT_THAT(this->fake->observers(), IsEmpty());

    this->calibration.addObserver(&this->observer);
    EXPECT_THAT(this->fake->observers(), SizeIs(1));
    this->calibration.removeObserver(&this->observer);
}

TYPED_TEST(SdkCalibration, AttachesEverybodyToTheNewControlAfterTheOldOneThrew)
{
    StoryOfCalibration<TypeParam> second;
    StoryOfCalibration<TypeParam> third;
    for (auto* const each : {&this->observer, &second, &third})
        this->calibration.addObserver(each);

    int calls = 0;
    const auto throwFromTheSecond = [&] {
        if (++calls == 2)
            throw std::runtime_error("the instrument failed");
    };
    this->fake->duringCall = throwFromTheSecond;
    EXPECT_THROW(this->calibration.onControlsAboutToBeReleased(), std::runtime_error);
    EXPECT_EQ(this->fake.use_count(), 1);

    this->fake = std::make_shared<typename TypeParam::Fake>();
    this->calibration.onControlsAvailable();
    EXPECT_THAT(this->fake->observers(), SizeIs(3));

    this->calibration.onControlsAboutToBeReleased();
    calls = 0;
    this->fake->duringCall = throwFromTheSecond;
    EXPECT_THROW(this->calibration.onControlsAvailable(), std::runtime_error);
    EXPECT_THAT(this->fake->observers(), SizeIs(1));
    this->calibration.onControlsAvailable();
    EXPECT_THAT(this->fake->observers(), SizeIs(3)) << "the one that failed was not registered";
    EXPECT_EQ(calls, 4);
    this->calibration.onControlsAboutToBeReleased();
}

TYPED_TEST(SdkCalibration, PassesOnWhatTheLookupOfTheControlThrows)
{
    bool fails = false;
    typename TypeParam::Adapter other{devices::ReacquiringControl<typename TypeParam::SdkIface>(
        [&]() -> sdk::ControlHandle<typename TypeParam::SdkIface> {
            if (fails)
                throw std::runtime_error("the instrument failed");
            return sdk::ControlHandle<typename TypeParam::SdkIface>(this->fake);
        })};
    other.addObserver(&this->observer);
    other.onControlsAboutToBeReleased();
    this->fake.reset();
    fails = true;
    StoryOfCalibration<TypeParam> second;
    EXPECT_THROW(other.addObserver(&second), std::runtime_error);
    EXPECT_THROW(other.onControlsAvailable(), std::runtime_error);
    EXPECT_THROW(other.onControlsAboutToBeReleased(), std::runtime_error);
    EXPECT_THROW(other.removeObserver(&second), std::runtime_error);
    EXPECT_THROW(other.frequencyPlan(), std::runtime_error);

    fails = false;
    this->fake = std::make_shared<typename TypeParam::Fake>();
    other.onControlsAvailable();
    EXPECT_THAT(this->fake->observers(), SizeIs(1)) << "the second one was removed";
    other.onControlsAboutToBeReleased();
}

TYPED_TEST(SdkCalibration, KeepsTheControlAliveWhileItReadsThePlan)
{
    const std::weak_ptr<typename TypeParam::Fake> alive = this->fake;
    this->fake->answer("frequencyPlan", sdk::FrequencyPlan{{{1.0, 2.0, 3}}});
    bool aliveDuringCall = false;
    this->fake->duringCall = [&] {
        this->fake.reset();
        aliveDuringCall = !alive.expired();
    };
    EXPECT_THAT(this->calibration.frequencyPlan().segments, SizeIs(1));
    EXPECT_TRUE(aliveDuringCall);
    EXPECT_TRUE(alive.expired());
}

} // namespace tov::testing

#include "service/calibration/sdkfactorycorrectioncontrol.h"
#include "testing/fakefactorycorrectioncontrol.h"

#include <gmock/gmock.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace tov::testing {

namespace {

using namespace devices::service;
using devices::FactoryCorrection;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class StoryOfCorrections final : public SdkFactoryCorrectionControl::Observer
{
public:
    void onCorrectionsChanged() override { story.push_back("corrections"); }
    void onCorrectionStatesChanged() override { story.push_back("states"); }
    void onEnabledChanged(FactoryCorrection correction, bool enabled) override
    {
        story.push_back(std::to_string(static_cast<int>(correction)) + (enabled ? " on" : " off"));
    }

    std::vector<std::string> story;
};

class SdkFactoryCorrections : public ::testing::Test
{
protected:
    std::shared_ptr<FakeFactoryCorrectionControl> fake = std::make_shared<FakeFactoryCorrectionControl>();
    std::shared_ptr<Journal> journal = std::make_shared<Journal>();
    StoryOfCorrections observer;
    SdkFactoryCorrectionControl corrections{devices::ReacquiringControl<sdk::IFactoryCorrectionControl>(
        [this] { return sdk::ControlHandle<sdk::IFactoryCorrectionControl>(fake); })};

    SdkFactoryCorrections() { fake->recordInto(journal); }

    void answerMasks(std::uint16_t valid, std::uint16_t modifiable)
    {
        fake->answer("validCorrections", valid);
        fake->answer("modifiableCorrections", modifiable);
    }
    std::shared_ptr<FakeFactoryCorrectionControl> release() { return std::exchange(fake, nullptr); }
};

} // namespace

TEST_F(SdkFactoryCorrections, ListsWhatBothSidesKnowInTheOrderOfTheFlags)
{
    fake->answer("supportedCorrections", std::uint16_t{0x8005});
    EXPECT_THAT(corrections.supported(), ElementsAre(FactoryCorrection::Correction1, FactoryCorrection::Correction3,
                                                     FactoryCorrection::Correction10));
    EXPECT_THAT(fake->calls(), ElementsAre("supportedCorrections()"));
}

TEST_F(SdkFactoryCorrections, SkipsFlagsThatTheApplicationDoesNotKnow)
{
    fake->answer("supportedCorrections", std::uint16_t{0x0C90});
    EXPECT_THAT(corrections.supported(), IsEmpty());
    fake->answer("supportedCorrections", std::uint16_t{0xFFFF});
    EXPECT_THAT(corrections.supported(), SizeIs(10));
}

TEST_F(SdkFactoryCorrections, QueriesLookAtTheirOwnMask)
{
    fake->answer("validCorrections", std::uint16_t{0x8001});
    fake->answer("enabledCorrections", std::uint16_t{0x0004});
    fake->answer("modifiableCorrections", std::uint16_t{0xFFFB});

    EXPECT_TRUE(corrections.isValid(FactoryCorrection::Correction1));
    EXPECT_TRUE(corrections.isValid(FactoryCorrection::Correction10));
    EXPECT_FALSE(corrections.isValid(FactoryCorrection::Correction3));
    EXPECT_FALSE(corrections.isEnabled(FactoryCorrection::Correction1));
    EXPECT_TRUE(corrections.isEnabled(FactoryCorrection::Correction3));
    EXPECT_TRUE(corrections.isModifiable(FactoryCorrection::Correction1));
    EXPECT_FALSE(corrections.isModifiable(FactoryCorrection::Correction3));
    EXPECT_THAT(fake->calls(),
                ElementsAre("validCorrections()", "validCorrections()", "validCorrections()", "enabledCorrections()",
                            "enabledCorrections()", "modifiableCorrections()", "modifiableCorrections()"));
}

TEST_F(SdkFactoryCorrections, SwitchesWhatIsValidAndModifiable)
{
    answerMasks(0x8000, 0x8000);
    corrections.setEnabled(FactoryCorrection::Correction10, true);
    corrections.setEnabled(FactoryCorrection::Correction10, false);
    EXPECT_THAT(fake->calls(),
                ElementsAre("validCorrections()", "modifiableCorrections()", "setEnabled(32768, true)",
                            "validCorrections()", "modifiableCorrections()", "setEnabled(32768, false)"));
}

TEST_F(SdkFactoryCorrections, RefusesSilentlyWhatIsNotValidOrNotModifiable)
{
    answerMasks(0x0001, 0x0002);
    corrections.setEnabled(FactoryCorrection::Correction1, true);
    corrections.setEnabled(FactoryCorrection::Correction2, true);
    EXPECT_THAT(fake->calls(), ElementsAre("validCorrections()", "modifiableCorrections()", "validCorrections()"))
        << "what is not valid is not asked for more";
}

TEST_F(SdkFactoryCorrections, LocksTheControlAnewForEveryStepOfASwitch)
{
    answerMasks(0x0001, 0x0001);
    std::shared_ptr<FakeFactoryCorrectionControl> released;
    fake->duringCall = [&] {
        if (fake)
            released = release();
    };
    corrections.setEnabled(FactoryCorrection::Correction1, true);
    EXPECT_THAT(journal->calls(), ElementsAre("validCorrections()", "modifiableCorrections()", "setEnabled(1, true)"))
        << "a control that somebody else holds is still reached";

    fake = std::exchange(released, nullptr);
    fake->duringCall = [this] { release(); };
    corrections.setEnabled(FactoryCorrection::Correction1, true);
    EXPECT_THAT(journal->calls(), SizeIs(4)) << "gone after the first step";
}

TEST_F(SdkFactoryCorrections, KnowsNothingWhenTheControlIsAbsent)
{
    release();
    EXPECT_THAT(corrections.supported(), IsEmpty());
    EXPECT_FALSE(corrections.isValid(FactoryCorrection::Correction1));
    EXPECT_FALSE(corrections.isEnabled(FactoryCorrection::Correction1));
    EXPECT_FALSE(corrections.isModifiable(FactoryCorrection::Correction1));
    corrections.setEnabled(FactoryCorrection::Correction1, true);
    EXPECT_THAT(journal->calls(), IsEmpty());
}

TEST_F(SdkFactoryCorrections, RelaysNotificationsOneForOne)
{
    corrections.addObserver(&observer);
    auto* const adapter = fake->observers().front();
    adapter->onCorrectionStatesChanged();
    adapter->onCorrectionsChanged();
    adapter->onEnabledChanged(sdk::CorrectionFlag{0x0100}, true);
    adapter->onEnabledChanged(sdk::CorrectionFlag{0x0001}, false);
    EXPECT_THAT(observer.story, ElementsAre("states", "corrections", "6 on", "0 off"));
}

TEST_F(SdkFactoryCorrections, DropsNotificationsOfUnknownFlags)
{
    corrections.addObserver(&observer);
    for (const unsigned int flag : {0x0000U, 0x0003U, 0x0010U, 0x4000U})
        fake->observers().front()->onEnabledChanged(static_cast<sdk::CorrectionFlag>(flag), true);
    EXPECT_THAT(observer.story, IsEmpty());
}

TEST_F(SdkFactoryCorrections, RegistersAnObserverOnceHoweverOftenItIsAdded)
{
    corrections.addObserver(nullptr);
    corrections.addObserver(&observer);
    corrections.addObserver(&observer);
    EXPECT_THAT(fake->observers(), SizeIs(1));
    EXPECT_THAT(observer.story, IsEmpty()) << "adding tells nothing";
    corrections.removeObserver(&observer);
    corrections.removeObserver(&observer);
    corrections.removeObserver(nullptr);
    EXPECT_THAT(fake->observers(), IsEmpty());
    EXPECT_THAT(fake->calls(), ElementsAre("addObserver()", "removeObserver()"));
}

TEST_F(SdkFactoryCorrections, TellsAnObserverThatWaitedToReadEverything)
{
    release();
    corrections.onControlsAboutToBeReleased();
    corrections.addObserver(&observer);
    corrections.onControlsAvailable();
    EXPECT_THAT(observer.story, IsEmpty()) << "they are not available yet";

    fake = std::make_shared<FakeFactoryCorrectionControl>();
    corrections.onControlsAvailable();
    EXPECT_THAT(observer.story, ElementsAre("corrections", "states"));
    EXPECT_THAT(fake->observers(), SizeIs(1));
}

TEST_F(SdkFactoryCorrections, TellsEachObserverBeforeTheNextIsRegistered)
{
    StoryOfCorrections second;
    corrections.addObserver(&observer);
    corrections.addObserver(&second);
    corrections.onControlsAboutToBeReleased();
    EXPECT_THAT(fake->observers(), IsEmpty());

    std::size_t toldBeforeSecond = 0;
    fake->duringCall = [&] { toldBeforeSecond = observer.story.size() + second.story.size(); };
    corrections.onControlsAvailable();
    EXPECT_EQ(toldBeforeSecond, 2U);
    EXPECT_THAT(observer.story, ElementsAre("corrections", "states"));
    EXPECT_THAT(second.story, ElementsAre("corrections", "states"));
}

TEST_F(SdkFactoryCorrections, KeepsAnObserverThatIsRemovedWhileTheControlIsAbsent)
{
    corrections.addObserver(&observer);
    corrections.onControlsAboutToBeReleased();
    release();
    corrections.removeObserver(&observer);

    fake = std::make_shared<FakeFactoryCorrectionControl>();
    corrections.onControlsAvailable();
    EXPECT_THAT(fake->observers(), SizeIs(1));
    corrections.removeObserver(&observer);
    EXPECT_THAT(fake->observers(), IsEmpty());
}

TEST_F(SdkFactoryCorrections, HaveNothingToDetachFromWhenTheControlIsAbsent)
{
    corrections.addObserver(&observer);
    release();
    corrections.onControlsAboutToBeReleased();
    corrections.onControlsAvailable();
    EXPECT_THAT(observer.story, IsEmpty());
}

TEST_F(SdkFactoryCorrections, RegistersTwiceWhenAvailableTwice)
{
    corrections.addObserver(&observer);
    corrections.onControlsAvailable();
    EXPECT_THAT(fake->observers(), SizeIs(2));
}

TEST_F(SdkFactoryCorrections, KeepsWhatTheSdkDoesNotLetGoOf)
{
    corrections.addObserver(&observer);
    fake->duringCall = [] { throw std::runtime_error("the instrument failed"); };
    EXPECT_THROW(corrections.removeObserver(&observer), std::runtime_error);
    EXPECT_THROW(corrections.onControlsAboutToBeReleased(), std::runtime_error);
    fake->observers().front()->onCorrectionsChanged();
    EXPECT_THAT(observer.story, ElementsAre("corrections"));
    EXPECT_EQ(fake.use_count(), 1);

    fake->duringCall = nullptr;
    corrections.removeObserver(&observer);
    EXPECT_THAT(fake->observers(), IsEmpty());
}

TEST_F(SdkFactoryCorrections, LetsTheSdkRemoveTheSameObserverWhileItLetsGo)
{
    corrections.addObserver(&observer);
    fake->duringCall = [this] {
        fake->duringCall = nullptr;
        corrections.removeObserver(&observer);
    };
    corrections.removeObserver(&observer);
    EXPECT_THAT(fake->calls(), ElementsAre("addObserver()", "removeObserver()", "removeObserver()"));
    EXPECT_THAT(fake->observers(), IsEmpty());
    corrections.onControlsAvailable();
    EXPECT_THAT(fake->observers(), IsEmpty());
}

TEST_F(SdkFactoryCorrections, KeepsAnObserverThatComesAnewWhileTheSdkLetsGoOfIt)
{
    corrections.addObserver(&observer);
    auto* const former = fake->observers().front();
    std::vector<std::unique_ptr<std::array<void*, 2>>> inTheWay; // so that the new adapter is not where the old one was
    fake->duringCall = [&] {
        fake->duringCall = nullptr;
        corrections.removeObserver(&observer);
        for (int i = 0; i < 100; ++i)
            inTheWay.push_back(std::make_unique<std::array<void*, 2>>());
        corrections.addObserver(&observer);
    };
    corrections.removeObserver(&observer);
    ASSERT_THAT(fake->observers(), SizeIs(1));
    EXPECT_NE(fake->observers().front(), former);
    fake->observers().front()->onCorrectionsChanged();
    EXPECT_THAT(observer.story, ElementsAre("corrections"));
    corrections.onControlsAboutToBeReleased();
    EXPECT_THAT(fake->observers(), IsEmpty());
}

TEST_F(SdkFactoryCorrections, KeepsAnObserverThatTheSdkRefused)
{
    fake->duringCall = [] { throw std::runtime_error("the instrument failed"); };
    EXPECT_THROW(corrections.addObserver(&observer), std::runtime_error);
    EXPECT_THROW(corrections.supported(), std::runtime_error);
    EXPECT_THROW(corrections.isValid(FactoryCorrection::Correction1), std::runtime_error);
    EXPECT_THROW(corrections.setEnabled(FactoryCorrection::Correction1, true), std::runtime_error);
    EXPECT_EQ(fake.use_count(), 1);

    fake->duringCall = nullptr;
    corrections.onControlsAvailable();
    EXPECT_THAT(fake->observers(), SizeIs(1));
    corrections.onControlsAboutToBeReleased();
}

TEST_F(SdkFactoryCorrections, LeavesTheSdkAloneWhenDestroyed)
{
    {
        SdkFactoryCorrectionControl other{devices::ReacquiringControl<sdk::IFactoryCorrectionControl>(
            [this] { return sdk::ControlHandle<sdk::IFactoryCorrectionControl>(fake); })};
        other.addObserver(&observer);
    }
    EXPECT_THAT(fake->calls(), ElementsAre("addObserver()"));
}

} // namespace tov::testing

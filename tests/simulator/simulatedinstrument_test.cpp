#include "simulator/simulatedinstrument.h"

#include "devices/controls.h"
#include "devices/reacquiringcontrol.h"
#include "patience.h"
#include "sdk/service/iloleakagecontrol.h"
#include "sdk/service/iyqsynthesiscontrol.h"
#include "service/tuning/sdkyqsynthesiscontrol.h"

#include <gmock/gmock.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace tov::testing {

namespace {

namespace controls = devices::controls;
using ::testing::UnorderedElementsAreArray;

class SimulatedInstrument : public ::testing::Test
{
protected:
    std::shared_ptr<sdk::service::ILoLeakageControl> loLeakage()
    {
        return std::static_pointer_cast<sdk::service::ILoLeakageControl>(
            instrument.findControl(controls::loLeakage.keys.sdk));
    }
    std::shared_ptr<sdk::service::IYqSynthesisControl> yqSynthesis()
    {
        return std::static_pointer_cast<sdk::service::IYqSynthesisControl>(
            instrument.findControl(controls::yqSynthesis.keys.sdk));
    }

    simulator::SimulatedInstrument instrument;
};

} // namespace

TEST_F(SimulatedInstrument, OffersEveryControlFromTheStart)
{
    std::vector<sdk::Key> expected;
    for (const devices::ControlName& control : controls::all)
        expected.push_back(control.keys.sdk);
    EXPECT_THAT(instrument.controlKeys(), UnorderedElementsAreArray(expected));
    for (const sdk::Key key : instrument.controlKeys())
        EXPECT_NE(instrument.findControl(key), nullptr);
}

TEST_F(SimulatedInstrument, HasNothingUnderAnUnknownKey)
{
    EXPECT_EQ(instrument.findControl({1}), nullptr);
    EXPECT_THROW(instrument.unfitControl({1}), std::out_of_range);
    EXPECT_THROW(instrument.fitControl({1}), std::out_of_range);
}

TEST_F(SimulatedInstrument, OffersTheSameControlUntilItIsReleased)
{
    EXPECT_EQ(loLeakage(), loLeakage());
}

TEST_F(SimulatedInstrument, LetsGoOfEverythingWhenItReleases)
{
    const std::weak_ptr observed = loLeakage();
    const auto locked = yqSynthesis();
    instrument.releaseControls();

    EXPECT_TRUE(observed.expired());
    EXPECT_EQ(locked.use_count(), 1) << "a caller keeps only what it locked";
    EXPECT_EQ(loLeakage(), nullptr);
    EXPECT_EQ(yqSynthesis(), nullptr);

    instrument.releaseControls();
    EXPECT_EQ(loLeakage(), nullptr);
}

TEST_F(SimulatedInstrument, OffersNewObjectsAfterARelease)
{
    const auto old = loLeakage();
    instrument.releaseControls();
    instrument.offerControls();

    EXPECT_NE(loLeakage(), nullptr);
    EXPECT_NE(loLeakage(), old);

    const auto offered = loLeakage();
    instrument.offerControls();
    EXPECT_EQ(loLeakage(), offered) << "offering twice changes nothing";
}

TEST_F(SimulatedInstrument, RemembersItsSettingsAcrossARelease)
{
    loLeakage()->setEnabled(true);
    yqSynthesis()->enableManualIf(true);
    yqSynthesis()->setSelectedIf(2);
    instrument.releaseControls();
    instrument.offerControls();

    EXPECT_TRUE(loLeakage()->isEnabled());
    EXPECT_TRUE(yqSynthesis()->manualIfEnabled());
    EXPECT_EQ(yqSynthesis()->selectedIf(), 2);
}

TEST_F(SimulatedInstrument, LacksAnUnfittedControlUntilItIsFitted)
{
    loLeakage()->setEnabled(true);
    instrument.unfitControl(controls::loLeakage.keys.sdk);
    EXPECT_EQ(loLeakage(), nullptr);
    EXPECT_NE(yqSynthesis(), nullptr);

    instrument.releaseControls();
    instrument.offerControls();
    EXPECT_EQ(loLeakage(), nullptr) << "offering does not fit it";

    instrument.fitControl(controls::loLeakage.keys.sdk);
    ASSERT_NE(loLeakage(), nullptr);
    EXPECT_TRUE(loLeakage()->isEnabled());
}

TEST_F(SimulatedInstrument, OffersAFittedControlOnlyWithTheOthers)
{
    instrument.releaseControls();
    instrument.unfitControl(controls::loLeakage.keys.sdk);
    instrument.fitControl(controls::loLeakage.keys.sdk);
    EXPECT_EQ(loLeakage(), nullptr);

    instrument.offerControls();
    EXPECT_NE(loLeakage(), nullptr);
}

TEST_F(SimulatedInstrument, StartsWithEverythingOff)
{
    EXPECT_FALSE(loLeakage()->isEnabled());
    EXPECT_FALSE(yqSynthesis()->manualIfEnabled());
    EXPECT_EQ(yqSynthesis()->selectedIf(), 0);
}

TEST_F(SimulatedInstrument, IgnoresAnIfThatItDoesNotSupport)
{
    const auto yq = yqSynthesis();
    const int count = static_cast<int>(yq->supportedIfs().size());
    yq->setSelectedIf(count - 1);
    for (const int unsupported : {-1, count, 1'000'000}) {
        yq->setSelectedIf(unsupported);
        EXPECT_EQ(yq->selectedIf(), count - 1);
    }
}

TEST(SimulatedInstrumentLife, EndsBeforeAControlThatIsStillLocked)
{
    auto instrument = std::make_unique<simulator::SimulatedInstrument>();
    const auto control = std::static_pointer_cast<sdk::service::IYqSynthesisControl>(
        instrument->findControl(controls::yqSynthesis.keys.sdk));
    instrument.reset();

    control->setSelectedIf(1);
    EXPECT_EQ(control->selectedIf(), 1);
    EXPECT_FALSE(control->supportedIfs().empty());
}

TEST_F(SimulatedInstrument, MayBeReleasedOfferedRefittedAndUsedFromAnyThread)
{
    const devices::service::SdkYqSynthesisControl adapter{
        devices::ReacquiringControl<sdk::service::IYqSynthesisControl>(
            [this] { return sdk::ControlHandle<sdk::service::IYqSynthesisControl>(yqSynthesis()); })};
    constexpr long enough = 100;
    std::atomic<bool> stop = false;
    std::atomic<long> wrong = 0;
    std::atomic<int> content =
        0; // of what must happen often: that a user finds it, that one misses it, that it is refitted

    std::vector<std::jthread> users;
    for (int i = 0; i < 2; ++i)
        users.emplace_back([&] {
            long present = 0;
            long absent = 0;
            while (!stop) {
                const auto ifs = adapter.supportedIfs();
                const int selected = adapter.selectedIf();
                wrong += (ifs.empty() || ifs.size() == 5U) && (selected == -1 || selected == 0) ? 0 : 1;
                content += ++(ifs.empty() ? absent : present) == enough ? 1 : 0;
            }
        });
    std::jthread fitter([&] {
        for (long fitted = 0; !stop;) {
            instrument.unfitControl(controls::yqSynthesis.keys.sdk);
            instrument.fitControl(controls::yqSynthesis.keys.sdk);
            content += ++fitted == enough ? 1 : 0;
        }
    });
    const Patience patience("the control was found and missed by each user, and refitted");
    for (int round = 0; round < 2000 || (content < 5 && patience.lasts()); ++round) {
        instrument.releaseControls();
        if (round % 16 == 0)
            std::this_thread::yield();
        instrument.offerControls();
        if (round % 16 == 8)
            std::this_thread::yield();
    }
    stop = true;
    users.clear();
    fitter.join();

    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(adapter.selectedIf(), 0);
}

} // namespace tov::testing

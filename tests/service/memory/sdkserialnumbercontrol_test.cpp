#include "service/memory/sdkserialnumbercontrol.h"
#include "testing/fakememoryserialnumbercontrol.h"

#include <gmock/gmock.h>

#include <memory>
#include <utility>
#include <vector>

namespace tov::testing {

namespace {

using namespace devices::service;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;

class SerialNumberEvents final : public ISerialNumberControl::Observer
{
public:
    void onSerialNumberEvent(const SerialNumberEvent& event) override { seen.emplace_back(event.first, event.second); }

    std::vector<std::pair<unsigned int, unsigned int>> seen;
};

class SdkSerialNumber : public ::testing::Test
{
protected:
    std::shared_ptr<FakeMemorySerialNumberControl> fake = std::make_shared<FakeMemorySerialNumberControl>();
    SerialNumberEvents observer;
    std::unique_ptr<SdkSerialNumberControl> control = make();

    std::unique_ptr<SdkSerialNumberControl> make()
    {
        return std::make_unique<SdkSerialNumberControl>(
            devices::ReacquiringControl<sdk::service::IMemorySerialNumberControl>(
                [this] { return sdk::ControlHandle<sdk::service::IMemorySerialNumberControl>(fake); }));
    }
};

} // namespace

TEST_F(SdkSerialNumber, CrossesTheNumbersOfANotification)
{
    control->addObserver(&observer);
    fake->observers().front()->onSerialNumberEvent(10, 20);
    EXPECT_THAT(observer.seen, ElementsAre(Pair(20, 10)));
}

TEST_F(SdkSerialNumber, TellsAnObserverAsOftenAsItCameUntilItIsRemovedOnce)
{
    control->addObserver(&observer);
    control->addObserver(&observer);
    fake->observers().front()->onSerialNumberEvent(1, 2);
    EXPECT_THAT(observer.seen, SizeIs(2));

    control->removeObserver(&observer);
    fake->observers().front()->onSerialNumberEvent(1, 2);
    EXPECT_THAT(observer.seen, SizeIs(2));
    control->removeObserver(&observer);
}

TEST_F(SdkSerialNumber, IsDetachedFromReleaseToAvailability)
{
    control->addObserver(&observer);
    control->onControlsAboutToBeReleased();
    EXPECT_THAT(fake->observers(), IsEmpty());

    fake = std::make_shared<FakeMemorySerialNumberControl>();
    control->onControlsAvailable();
    ASSERT_THAT(fake->observers(), SizeIs(1));
    fake->observers().front()->onSerialNumberEvent(1, 2);
    EXPECT_THAT(observer.seen, SizeIs(1));
}

TEST_F(SdkSerialNumber, DoesNotGuardAgainstASecondAvailability)
{
    control->onControlsAvailable();
    EXPECT_THAT(fake->observers(), SizeIs(2));
}

TEST_F(SdkSerialNumber, AttachesLaterWhenTheControlIsAbsentAtFirst)
{
    fake.reset();
    control = make();
    control->addObserver(&observer);
    control->onControlsAvailable();

    fake = std::make_shared<FakeMemorySerialNumberControl>();
    EXPECT_THAT(fake->observers(), IsEmpty());
    control->onControlsAvailable();
    fake->observers().front()->onSerialNumberEvent(1, 2);
    EXPECT_THAT(observer.seen, SizeIs(1));
}

TEST_F(SdkSerialNumber, DetachesWhenItIsDestroyed)
{
    control.reset();
    EXPECT_THAT(fake->observers(), IsEmpty());
}

} // namespace tov::testing

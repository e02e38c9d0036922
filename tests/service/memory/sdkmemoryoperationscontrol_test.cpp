#include "service/memory/sdkmemoryoperationscontrol.h"
#include "testing/fakememoryoperationscontrol.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace tov::testing {

namespace {

using namespace devices::service;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class StoryOfMemory final : public IMemoryOperationsControl::IObserver
{
public:
    explicit StoryOfMemory(std::vector<std::string>& story, std::string name = "")
        : m_story(story)
        , m_name(std::move(name))
    {
    }
    void onNotification1(const MemoryOperationEvent& event) override { tell(1, event); }
    void onNotification2(const MemoryOperationEvent& event) override { tell(2, event); }
    void onNotification3(const MemoryOperationEvent& event) override { tell(3, event); }
    void onNotification4(const MemoryOperationEvent& event) override { tell(4, event); }

private:
    void tell(int which, const MemoryOperationEvent& event)
    {
        m_story.push_back(m_name + std::to_string(which) + ": " + std::to_string(event.first) + " "
                          + std::to_string(event.second));
    }

    std::vector<std::string>& m_story;
    std::string m_name;
};

class SdkMemoryOperations : public ::testing::Test
{
protected:
    std::shared_ptr<FakeMemoryOperationsControl> fake = std::make_shared<FakeMemoryOperationsControl>();
    std::vector<std::string> story;
    StoryOfMemory observer{story};

    std::unique_ptr<SdkMemoryOperationsControl> memory = make();

    std::unique_ptr<SdkMemoryOperationsControl> make()
    {
        return std::make_unique<SdkMemoryOperationsControl>(
            devices::ReacquiringControl<sdk::service::IMemoryOperationsControl>(
                [this] { return sdk::ControlHandle<sdk::service::IMemoryOperationsControl>(fake); }));
    }
};

} // namespace

TEST_F(SdkMemoryOperations, CrossesTheNotificationsAndTheirNumbers)
{
    memory->addObserver(&observer);
    auto* const sdkObserver = fake->observers().front();

    sdkObserver->onNotification1(7, 9);
    sdkObserver->onNotification2(1, 2);
    sdkObserver->onNotification3(3, 4);
    sdkObserver->onNotification4(0xFFFF'FFFF, 0);

    EXPECT_THAT(story, ElementsAre("3: 9 7", "4: 2 1", "2: 4 3", "1: 0 4294967295"));
}

TEST_F(SdkMemoryOperations, TellsObserversInTheirOrderAndAsOftenAsTheyCame)
{
    StoryOfMemory second(story, "second ");
    memory->addObserver(&observer);
    memory->addObserver(&second);
    memory->addObserver(&observer);
    auto* const sdkObserver = fake->observers().front();

    sdkObserver->onNotification4(1, 2);
    EXPECT_THAT(story, ElementsAre("1: 2 1", "second 1: 2 1", "1: 2 1"));

    story.clear();
    memory->removeObserver(&observer);
    memory->removeObserver(&observer);
    sdkObserver->onNotification4(1, 2);
    EXPECT_THAT(story, ElementsAre("second 1: 2 1"));
}

TEST_F(SdkMemoryOperations, RegistersOneObserverWithTheSdkForItsWholeLife)
{
    ASSERT_THAT(fake->observers(), SizeIs(1));
    memory->addObserver(&observer);
    EXPECT_THAT(fake->observers(), SizeIs(1));
    EXPECT_THAT(fake->calls(), IsEmpty());

    memory.reset();
    EXPECT_THAT(fake->observers(), IsEmpty());
}

TEST_F(SdkMemoryOperations, IsAttachedAgainToTheControlThatIsOfferedNext)
{
    memory->addObserver(&observer);
    memory->onControlsAboutToBeReleased();
    EXPECT_THAT(fake->observers(), IsEmpty());

    fake = std::make_shared<FakeMemoryOperationsControl>();
    memory->onControlsAvailable();
    ASSERT_THAT(fake->observers(), SizeIs(1));
    fake->observers().front()->onNotification1(1, 2);
    EXPECT_THAT(story, ElementsAre("3: 2 1"));
}

TEST_F(SdkMemoryOperations, TellsObserversThatCameWhileTheControlWasAbsent)
{
    fake.reset();
    memory = make();
    memory->addObserver(&observer);
    memory->onControlsAboutToBeReleased();

    fake = std::make_shared<FakeMemoryOperationsControl>();
    memory->onControlsAvailable();
    fake->observers().front()->onNotification2(1, 2);
    EXPECT_THAT(story, ElementsAre("4: 2 1"));
}

TEST_F(SdkMemoryOperations, PassesAnEmptyContentOn)
{
    EXPECT_TRUE(memory->write({}));
    EXPECT_THAT(fake->calls(), ElementsAre("write({})"));
}

} // namespace tov::testing

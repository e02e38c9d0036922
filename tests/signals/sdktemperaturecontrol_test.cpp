#include "service/monitoring/sdktemperaturecontrol.h"
#include "signals/metaobjects.h"
#include "testing/faketemperaturecontrol.h"

#include <QCoreApplication>
#include <QThread>

#include <gmock/gmock.h>

#include <atomic>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace tov::testing {

namespace {

using devices::service::SdkTemperatureControl;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class SdkTemperature : public ::testing::Test
{
protected:
    std::shared_ptr<FakeTemperatureControl> fake = make(20.0F, {{"one", 30.0F}});
    std::unique_ptr<SdkTemperatureControl> temperatures;
    std::vector<std::string> story;

    static std::shared_ptr<FakeTemperatureControl> make(float overall, std::unordered_map<std::string, float> modules)
    {
        auto made = std::make_shared<FakeTemperatureControl>();
        made->answer("temperature", overall);
        made->modules = std::move(modules);
        return made;
    }

    SdkTemperatureControl& create()
    {
        temperatures = std::make_unique<SdkTemperatureControl>(devices::ReacquiringControl<sdk::ITemperatureControl>(
            [this] { return sdk::ControlHandle<sdk::ITemperatureControl>(fake); }));
        QObject::connect(temperatures.get(), &SdkTemperatureControl::temperaturesChanged,
                         [this] { story.push_back("changed to " + std::to_string(temperatures->temperature())); });
        return *temperatures;
    }

    std::vector<std::string> names() const
    {
        std::vector<std::string> all;
        for (const auto& module : temperatures->modulesTemperature())
            all.push_back(module.name.toStdString());
        return all;
    }
};

} // namespace

TEST_F(SdkTemperature, HasOneSignal)
{
    const QMetaObject& meta = SdkTemperatureControl::staticMetaObject;
    EXPECT_STREQ(meta.className(), "tov::devices::service::SdkTemperatureControl");
    EXPECT_EQ(meta.superClass(), &QObject::staticMetaObject);
    EXPECT_THAT(ownMembers(meta), ElementsAre("temperaturesChanged()"));
    EXPECT_EQ(create().parent(), nullptr);
}

TEST_F(SdkTemperature, IsReadOnceWhenItIsMadeAndThenOnlyOnNotification)
{
    create();
    EXPECT_THAT(fake->calls(), ElementsAre("addObserver()", "modulesTemperature()", "temperature()"));
    EXPECT_EQ(temperatures->temperature(), 20.0);
    EXPECT_THAT(names(), ElementsAre("one"));
    EXPECT_THAT(fake->calls(), SizeIs(3)) << "reading does not ask the instrument";
    EXPECT_THAT(story, IsEmpty());
}

TEST_F(SdkTemperature, ListsModulesInTheOrderOfTheirCodeUnits)
{
    fake->modules = {{"b", 1.0F},           {"a", 2.0F}, {"B", 3.0F}, {"", 4.0F}, {"\xF0\x90\x80\x80", 5.0F},
                     {"\xEF\xBF\xBD", 6.0F}};
    create();
    // The character above U+FFFF begins with the unit 0xD800 and so comes before U+FFFD.
    EXPECT_THAT(names(), ElementsAre("", "B", "a", "b", "\xF0\x90\x80\x80", "\xEF\xBF\xBD"));
    EXPECT_EQ(temperatures->modulesTemperature().capacity(), 6U);
}

TEST_F(SdkTemperature, WidensReadingsWithoutRounding)
{
    fake = make(36.6F, {{"one", 36.6F}});
    create();
    EXPECT_EQ(temperatures->temperature(), 36.59999847412109375);
    EXPECT_EQ(temperatures->modulesTemperature().front().temperature, 36.59999847412109375);
}

TEST_F(SdkTemperature, IsRefreshedOnNotificationBeforeItTells)
{
    create();
    fake->answer("temperature", 21.0F);
    fake->modules = {};
    fake->observers().front()->onTemperatureChanged();
    EXPECT_THAT(story, ElementsAre("changed to 21.000000"));
    EXPECT_THAT(temperatures->modulesTemperature(), IsEmpty());
}

TEST_F(SdkTemperature, KeepsItsReadingsWhenTheControlsGo)
{
    create();
    temperatures->onControlsAboutToBeReleased();
    EXPECT_THAT(fake->observers(), IsEmpty());
    EXPECT_EQ(fake->calls().back(), "removeObserver()");
    fake.reset();
    EXPECT_EQ(temperatures->temperature(), 20.0);
    EXPECT_THAT(names(), ElementsAre("one"));

    temperatures->onControlsAvailable();
    EXPECT_THAT(story, ElementsAre("changed to 20.000000")) << "told even though they are not available yet";

    fake = make(25.0F, {{"two", 35.0F}});
    temperatures->onControlsAvailable();
    EXPECT_THAT(story, ElementsAre("changed to 20.000000", "changed to 25.000000"));
    EXPECT_THAT(names(), ElementsAre("two"));
    EXPECT_THAT(fake->observers(), SizeIs(1));
}

TEST_F(SdkTemperature, KeepsItsReadingsWhenAControlNotifiesThatCannotBeReachedAnyMore)
{
    create();
    auto* const adapter = fake->observers().front();
    fake.reset();
    adapter->onTemperatureChanged();
    EXPECT_THAT(story, ElementsAre("changed to 20.000000"));
    EXPECT_THAT(names(), ElementsAre("one"));
}

TEST_F(SdkTemperature, IsNothingBeforeTheControlWasEverThere)
{
    fake.reset();
    create();
    EXPECT_EQ(temperatures->temperature(), 0.0);
    EXPECT_THAT(temperatures->modulesTemperature(), IsEmpty());
    EXPECT_THAT(story, IsEmpty());
}

TEST_F(SdkTemperature, AttachesTheSameObserverAgainWhenAvailableTwice)
{
    create();
    temperatures->onControlsAvailable();
    const auto observers = fake->observers();
    ASSERT_THAT(observers, SizeIs(2));
    EXPECT_EQ(observers[0], observers[1]);
}

TEST_F(SdkTemperature, IsDetachedBeforeItGoes)
{
    int notified = 0;
    {
        const SdkTemperatureControl leaving{devices::ReacquiringControl<sdk::ITemperatureControl>(
            [this] { return sdk::ControlHandle<sdk::ITemperatureControl>(fake); })};
        fake->duringCall = [&] {
            if (fake->calls().back() == "removeObserver()") {
                fake->observers().front()->onTemperatureChanged();
                ++notified;
            }
        };
    }
    EXPECT_EQ(notified, 1) << "its observer still works while it is removed";
    EXPECT_THAT(fake->observers(), IsEmpty());
    EXPECT_EQ(fake.use_count(), 1);
}

TEST_F(SdkTemperature, KeepsItsReadingsAndTellsNothingWhenTheSdkThrows)
{
    create();
    fake->answer("temperature", 50.0F);
    fake->modules = {};
    for (const std::string operation : {"modulesTemperature()", "temperature()"}) {
        fake->duringCall = [&] {
            if (fake->calls().back() == operation)
                throw std::runtime_error("the instrument failed");
        };
        EXPECT_THROW(fake->observers().front()->onTemperatureChanged(), std::runtime_error) << operation;
        EXPECT_THROW(temperatures->onControlsAvailable(), std::runtime_error) << operation;
        EXPECT_EQ(temperatures->temperature(), 20.0);
        EXPECT_THAT(names(), ElementsAre("one"));
        EXPECT_THAT(story, IsEmpty());
        EXPECT_EQ(fake.use_count(), 1);
    }
    fake->duringCall = nullptr;
}

TEST_F(SdkTemperature, LeavesNothingBehindWhenItCannotBeMade)
{
    for (const std::string operation : {"addObserver()", "modulesTemperature()", "temperature()"}) {
        fake->duringCall = [&] {
            if (fake->calls().back() == operation)
                throw std::runtime_error("the instrument failed");
        };
        EXPECT_THROW(create(), std::runtime_error) << operation;
        EXPECT_THAT(fake->observers(), IsEmpty()) << operation;
        EXPECT_EQ(fake.use_count(), 1) << operation;
    }
}

TEST_F(SdkTemperature, TellsInTheThreadThatNotifies)
{
    create();
    std::thread::id emitting;
    QObject::connect(temperatures.get(), &SdkTemperatureControl::temperaturesChanged,
                     [&] { emitting = std::this_thread::get_id(); });
    QObject receiver;
    std::thread::id receiving;
    QObject::connect(temperatures.get(), &SdkTemperatureControl::temperaturesChanged, &receiver,
                     [&] { receiving = std::this_thread::get_id(); });

    std::thread notifying([&] { fake->observers().front()->onTemperatureChanged(); });
    const std::thread::id notifyingId = notifying.get_id();
    notifying.join();
    EXPECT_EQ(emitting, notifyingId);
    EXPECT_EQ(receiving, std::thread::id()) << "a receiver of another thread is told by its event loop";
    QCoreApplication::sendPostedEvents(&receiver);
    EXPECT_EQ(receiving, std::this_thread::get_id());
}

// The instrument's answer is held back while readers go on; a reader that waited for it would wait for ever.
TEST_F(SdkTemperature, IsReadWithoutWaitingForTheInstrument)
{
    create();
    for (const std::string operation : {"modulesTemperature()", "temperature()"}) {
        std::promise<void> asked;
        std::promise<void> goOn;
        fake->duringCall = [&] {
            if (fake->calls().back() == operation) {
                asked.set_value();
                goOn.get_future().wait();
            }
        };
        std::jthread refreshing([&] { fake->observers().front()->onTemperatureChanged(); });
        asked.get_future().wait();
        EXPECT_EQ(temperatures->temperature(), 20.0);
        EXPECT_THAT(names(), ElementsAre("one"));
        goOn.set_value();
    }
    fake->duringCall = nullptr;
}

} // namespace tov::testing

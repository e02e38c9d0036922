#include "service/calibration/sdkcalibrationcontrolhandle.h"
#include "service/calibration/sdkcalibrationcontrolwatcher.h"
#include "signals/metaobjects.h"
#include "testing/fakecalibrationcontroller.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QThread>

#include <gmock/gmock.h>

#include <limits>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tov::testing {

namespace {

using devices::service::SdkCalibrationControlHandle;
using devices::service::SdkCalibrationControlWatcher;
using sdk::service::calibrations::ICalibrationController;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class SdkCalibrationController : public ::testing::Test
{
protected:
    std::mutex mutex; // guards the fake while other threads look it up
    std::shared_ptr<FakeCalibrationController> fake = std::make_shared<FakeCalibrationController>();
    std::unique_ptr<SdkCalibrationControlHandle> handle =
        std::make_unique<SdkCalibrationControlHandle>(devices::ReacquiringControl<ICalibrationController>([this] {
            const std::lock_guard guard(mutex);
            return sdk::ControlHandle<ICalibrationController>(fake);
        }));
    std::vector<std::string> story;

    void exchange(std::shared_ptr<FakeCalibrationController> other)
    {
        const std::lock_guard guard(mutex);
        fake.swap(other);
    }

    // Writes down what `watcher` emits, on the thread that emits it.
    void record(const SdkCalibrationControlWatcher& watcher)
    {
        QObject::connect(&watcher, &SdkCalibrationControlWatcher::unitStatusChanged,
                         [this] { story.push_back("unit"); });
        QObject::connect(&watcher, &SdkCalibrationControlWatcher::saveProgressChanged,
                         [this](int percent) { story.push_back(std::to_string(percent) + " %"); });
        QObject::connect(&watcher, &SdkCalibrationControlWatcher::configurationChanged,
                         [this] { story.push_back("configuration"); });
    }
};

} // namespace

TEST_F(SdkCalibrationController, HandleHasItsTwoSignalsInOrder)
{
    const QMetaObject& meta = SdkCalibrationControlHandle::staticMetaObject;
    EXPECT_STREQ(meta.className(), "tov::devices::service::SdkCalibrationControlHandle");
    EXPECT_EQ(meta.superClass(), &QObject::staticMetaObject);
    EXPECT_THAT(ownMembers(meta), ElementsAre("controlsAboutToBeReleased()", "controlsAvailable()"));
}

TEST_F(SdkCalibrationController, WatcherHasItsThreeSignalsInOrder)
{
    const QMetaObject& meta = SdkCalibrationControlWatcher::staticMetaObject;
    EXPECT_STREQ(meta.className(), "tov::devices::service::SdkCalibrationControlWatcher");
    EXPECT_EQ(meta.superClass(), &QObject::staticMetaObject);
    EXPECT_THAT(ownMembers(meta),
                ElementsAre("unitStatusChanged()", "saveProgressChanged(int percent)", "configurationChanged()"));
}

TEST_F(SdkCalibrationController, HandleLendsTheControllerAndKeepsItAliveMeanwhile)
{
    std::weak_ptr<FakeCalibrationController> alive = fake;
    {
        const auto locked = handle->lock();
        ASSERT_TRUE(locked);
        fake.reset();
        EXPECT_FALSE(alive.expired());
        locked->addObserver(nullptr);
    }
    EXPECT_TRUE(alive.expired());
    EXPECT_FALSE(handle->lock());
}

TEST_F(SdkCalibrationController, HandleHasNoParentAndPassesTheLifecycleOn)
{
    EXPECT_EQ(handle->parent(), nullptr);
    const QSignalSpy released(handle.get(), &SdkCalibrationControlHandle::controlsAboutToBeReleased);
    const QSignalSpy available(handle.get(), &SdkCalibrationControlHandle::controlsAvailable);
    handle->onControlsAvailable();
    EXPECT_THAT((std::vector{released.count(), available.count()}), ElementsAre(0, 1));
    handle->onControlsAboutToBeReleased();
    EXPECT_THAT((std::vector{released.count(), available.count()}), ElementsAre(1, 1));
    EXPECT_THAT(fake->calls(), IsEmpty()) << "the handle itself asks the controller nothing";
}

TEST_F(SdkCalibrationController, WatcherIsAttachedWhileItLives)
{
    {
        QObject parent;
        const SdkCalibrationControlWatcher watcher(*handle, &parent);
        EXPECT_EQ(watcher.parent(), &parent);
        EXPECT_THAT(fake->calls(), ElementsAre("removeObserver()", "addObserver()"));
        EXPECT_THAT(fake->observers(), SizeIs(1));
    }
    EXPECT_THAT(fake->observers(), IsEmpty());
    EXPECT_EQ(fake.use_count(), 1);
    handle->onControlsAvailable();
    EXPECT_THAT(fake->observers(), IsEmpty()) << "the connections went with the watcher";
}

TEST_F(SdkCalibrationController, WatcherRelaysEveryNotification)
{
    const SdkCalibrationControlWatcher watcher(*handle);
    record(watcher);
    auto* const observer = fake->observers().front();
    observer->onConfigurationChanged();
    observer->onUnitStatusChanged();
    observer->onSaveProgress(9, {1, 4});
    EXPECT_THAT(story, ElementsAre("configuration", "unit", "25 %"));
}

TEST_F(SdkCalibrationController, WatcherTellsProgressInPercentOfWhatThereIsToDo)
{
    struct Row
    {
        std::uint64_t done, total;
        int percent;
    };
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    const SdkCalibrationControlWatcher watcher(*handle);
    record(watcher);
    for (const auto& [done, total, percent] : {
             Row{0, 3, 0}, Row{1, 3, 33}, Row{3, 3, 100}, Row{5, 0, 0}, Row{0, 0, 0}, Row{7, 4, 175},
             Row{most, most, 0},                                  // the product wraps to 2^64 - 100
             Row{most, 1, -100},                                  // and its low 32 bits are negative
             Row{184'467'440'737'095'517, 1, 84},                 // the product is 2^64 + 84
             Row{std::uint64_t{1} << 32, 100, 0},                 // 2^32
             Row{30'000'000, 1, static_cast<int>(3'000'000'000U)} // the low 32 bits are negative
         }) {
        story.clear();
        fake->observers().front()->onSaveProgress(0, {done, total});
        EXPECT_THAT(story, ElementsAre(std::to_string(percent) + " %")) << done << " of " << total;
    }
}

TEST_F(SdkCalibrationController, WatcherAnnouncesOnceThatEverythingMustBeReadWhenAvailable)
{
    const SdkCalibrationControlWatcher watcher(*handle);
    record(watcher);
    handle->onControlsAboutToBeReleased();
    EXPECT_THAT(fake->observers(), IsEmpty());
    EXPECT_THAT(story, IsEmpty());

    exchange(std::make_shared<FakeCalibrationController>());
    handle->onControlsAvailable();
    EXPECT_THAT(story, ElementsAre("unit", "configuration"));
    EXPECT_THAT(fake->observers(), SizeIs(1));
}

TEST_F(SdkCalibrationController, WatcherWaitsSilentlyForAControllerThatIsAbsent)
{
    exchange(nullptr);
    const SdkCalibrationControlWatcher watcher(*handle);
    record(watcher);
    EXPECT_THAT(story, IsEmpty());

    exchange(std::make_shared<FakeCalibrationController>());
    handle->onControlsAvailable();
    EXPECT_THAT(fake->observers(), SizeIs(1));
    EXPECT_THAT(story, ElementsAre("unit", "configuration"));
}

TEST_F(SdkCalibrationController, WatcherIsAttachedWhenItTellsThatTheControlsAreThere)
{
    const SdkCalibrationControlWatcher watcher(*handle);
    handle->onControlsAboutToBeReleased();
    std::size_t attached = 0;
    QObject::connect(&watcher, &SdkCalibrationControlWatcher::unitStatusChanged,
                     [&] { attached = fake->observers().size(); });
    handle->onControlsAvailable();
    EXPECT_EQ(attached, 1U);
}

TEST_F(SdkCalibrationController, WatcherHearsOfAnAnnouncementWhileItAttachesItself)
{
    fake->duringCall = [this] {
        if (fake->calls().back() == "addObserver()") {
            fake->duringCall = nullptr;
            handle->onControlsAboutToBeReleased();
        }
    };
    const SdkCalibrationControlWatcher watcher(*handle);
    EXPECT_THAT(fake->calls(), ElementsAre("removeObserver()", "addObserver()", "removeObserver()"));
}

TEST_F(SdkCalibrationController, WatcherHasNothingToDetachFromWhenTheControllerIsAbsent)
{
    const SdkCalibrationControlWatcher watcher(*handle);
    record(watcher);
    exchange(nullptr);
    handle->onControlsAboutToBeReleased();

    exchange(std::make_shared<FakeCalibrationController>());
    handle->onControlsAboutToBeReleased();
    EXPECT_THAT(fake->calls(), ElementsAre("removeObserver()"));
    EXPECT_THAT(story, IsEmpty());
}

TEST_F(SdkCalibrationController, WatcherIsRegisteredOnceAfterAnySequenceOfAnnouncements)
{
    const SdkCalibrationControlWatcher watcher(*handle);
    // Every sequence of eight announcements, as the bits of a number.
    for (unsigned int sequence = 0; sequence < 256; ++sequence) {
        for (unsigned int step = 0; step < 8; ++step) {
            if ((sequence >> step & 1U) != 0)
                handle->onControlsAvailable();
            else
                handle->onControlsAboutToBeReleased();
        }
        const std::size_t expected = (sequence & 0x80U) != 0 ? 1 : 0;
        ASSERT_THAT(fake->observers(), SizeIs(expected)) << sequence;
    }
}

TEST_F(SdkCalibrationController, WatchersOfOneHandleAreIndependent)
{
    const SdkCalibrationControlWatcher first(*handle);
    {
        const SdkCalibrationControlWatcher second(*handle);
        EXPECT_THAT(fake->observers(), SizeIs(2));
    }
    EXPECT_THAT(fake->observers(), SizeIs(1));
}

TEST_F(SdkCalibrationController, WatcherEmitsOnTheThreadOnWhichTheSdkNotifies)
{
    const SdkCalibrationControlWatcher watcher(*handle);
    QThread* emitting = nullptr;
    QObject::connect(&watcher, &SdkCalibrationControlWatcher::unitStatusChanged,
                     [&] { emitting = QThread::currentThread(); });
    QObject receiver;
    QThread* receiving = nullptr;
    QObject::connect(&watcher, &SdkCalibrationControlWatcher::unitStatusChanged, &receiver,
                     [&] { receiving = QThread::currentThread(); });

    QThread* notifying = nullptr;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        notifying = QThread::currentThread();
        fake->observers().front()->onUnitStatusChanged();
    }));
    thread->start();
    thread->wait();
    EXPECT_EQ(emitting, notifying);
    EXPECT_EQ(receiving, nullptr) << "a receiver of another thread is told by its event loop";
    QCoreApplication::sendPostedEvents(&receiver);
    EXPECT_EQ(receiving, QThread::currentThread());
}

// The handle lives in a thread of its own and the watcher in this one.
TEST_F(SdkCalibrationController, WatcherIsAttachedInItsOwnThreadWhenTheHandleIsInAnother)
{
    QThread thread;
    handle->moveToThread(&thread);
    thread.start();
    {
        QThread* announcing = nullptr;
        QThread* registering = nullptr; // also by the watcher's end
        SdkCalibrationControlWatcher watcher(*handle);
        QObject::connect(&watcher, &SdkCalibrationControlWatcher::configurationChanged,
                         [&] { announcing = QThread::currentThread(); });
        QSignalSpy announced(&watcher, &SdkCalibrationControlWatcher::configurationChanged);

        const auto lastOfMany = [&] {
            const auto inThread = [&](auto action) {
                QMetaObject::invokeMethod(handle.get(), action, Qt::BlockingQueuedConnection);
            };
            for (int round = 0; round < 20; ++round) {
                inThread([&] { handle->onControlsAboutToBeReleased(); });
                auto next = std::make_shared<FakeCalibrationController>();
                next->duringCall = [&] { registering = QThread::currentThread(); };
                exchange(std::move(next));
                inThread([&] { handle->onControlsAvailable(); });
            }
        };
        lastOfMany();
        EXPECT_THAT(fake->observers(), IsEmpty()) << "nothing happens before this thread's event loop runs";
        while (announced.count() < 20)
            ASSERT_TRUE(announced.wait(300'000));

        EXPECT_THAT(fake->observers(), SizeIs(1));
        EXPECT_EQ(registering, QThread::currentThread());
        EXPECT_EQ(announcing, QThread::currentThread());
    }
    EXPECT_THAT(fake->observers(), IsEmpty());
    thread.quit();
    thread.wait();
}

TEST_F(SdkCalibrationController, WatcherPassesOnWhatTheSdkThrowsAndLeavesNothingBehind)
{
    fake->duringCall = [this] {
        if (fake->calls().back() == "addObserver()")
            throw std::runtime_error("the instrument failed");
    };
    EXPECT_THROW(std::make_unique<SdkCalibrationControlWatcher>(*handle), std::runtime_error);
    fake->duringCall = nullptr;
    EXPECT_THAT(fake->calls(), ElementsAre("removeObserver()", "addObserver()"));
    EXPECT_THAT(fake->observers(), IsEmpty());
    EXPECT_EQ(fake.use_count(), 1);
    handle->onControlsAvailable();
    EXPECT_THAT(fake->observers(), IsEmpty());
}

TEST_F(SdkCalibrationController, WatcherThatGoesDoesNotHearOfAnAnnouncementAnyMore)
{
    auto watcher = std::make_unique<SdkCalibrationControlWatcher>(*handle);
    int announcements = 0;
    fake->duringCall = [&] {
        ++announcements;
        handle->onControlsAvailable();
    };
    watcher.reset();
    fake->duringCall = nullptr;
    EXPECT_EQ(announcements, 1);
    EXPECT_THAT(fake->observers(), IsEmpty());
}

} // namespace tov::testing

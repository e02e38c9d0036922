#include "host/instrumentsession.h"
#include "patience.h"
#include "simulator/simulatedinstrument.h"

#include <QEventLoop>
#include <QTimer>

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <expected>
#include <future>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace tov::testing {

namespace {

using std::chrono::milliseconds;
using ::testing::ElementsAre;
using ::testing::ThrowsMessage;

namespace controls = host::controls;
const auto& serialNumber = controls::serialNumber;
constexpr milliseconds noPatience(0);

using Number = std::expected<unsigned int, devices::service::ISerialNumberControl::Error>;

struct Window : QObject
{
    void show(const Number& number)
    {
        shown = number.value_or(0);
        shownOn = std::this_thread::get_id();
        events.quit();
    }

    QEventLoop events;
    unsigned int shown = 0;
    std::thread::id shownOn;
};

class SessionCalls : public ::testing::Test
{
protected:
    // Occupies the instrument's thread until `go` is told.
    QFuture<void> occupy()
    {
        return session.run(serialNumber, [this, gone = go.get_future().share()](const auto& /*control*/) {
            begun.set_value();
            gone.wait();
        });
    }

    std::shared_ptr<simulator::SimulatedInstrument> instrument = std::make_shared<simulator::SimulatedInstrument>();
    std::unique_ptr<host::InstrumentSession> owned = std::make_unique<host::InstrumentSession>(instrument);
    host::InstrumentSession& session = *owned;
    std::promise<void> begun;
    std::promise<void> go;
};

} // namespace

TEST_F(SessionCalls, GiveWhatTheFunctionGives)
{
    auto number = session.run(serialNumber, [](auto& control) { return control.serialNumber(); });
    EXPECT_EQ(number.takeResult(), session.control(serialNumber)->serialNumber());
    auto pointer = session.run(serialNumber, [](auto& /*control*/) { return std::make_unique<int>(7); });
    EXPECT_EQ(*pointer.takeResult(), 7) << "it is moved, not copied";
}

TEST_F(SessionCalls, AreMadeOneAfterTheOtherOnAThreadOfTheInstrument)
{
    std::vector<int> order;
    std::vector<std::thread::id> threads;
    for (int i = 0; i < 100; ++i)
        session.run(serialNumber, [&, i](const auto& /*control*/) {
            order.push_back(i);
            threads.push_back(std::this_thread::get_id());
        });
    ASSERT_TRUE(session.waitForCalls());
    ASSERT_EQ(order.size(), 100U);
    EXPECT_TRUE(std::ranges::is_sorted(order));
    EXPECT_NE(threads.front(), std::this_thread::get_id());
    EXPECT_EQ(std::ranges::count(threads, threads.front()), 100);
}

TEST_F(SessionCalls, PassOnWhatTheFunctionThrows)
{
    auto failed = session.run(serialNumber, [](const auto& /*control*/) -> int { throw std::runtime_error("broken"); });
    EXPECT_THAT([&] { failed.result(); }, ThrowsMessage<std::runtime_error>("broken"));
}

TEST_F(SessionCalls, SayWhichControlIsAbsent)
{
    instrument->unfitControl(controls::usbId.keys.sdk);
    auto absent = session.run(controls::usbId, [](const auto& /*control*/) { return 1; });
    EXPECT_THAT([&] { absent.result(); }, ThrowsMessage<host::ControlAbsent>("the instrument has no usb-id control"));
}

TEST_F(SessionCalls, AreTakenBackBeforeTheyHaveBegunOnly)
{
    auto first = occupy();
    bool called = false;
    auto second = session.run(serialNumber, [&](const auto& /*control*/) { called = true; });
    begun.get_future().wait();
    first.cancel();
    second.cancel();
    EXPECT_FALSE(session.waitForCalls(noPatience));
    go.set_value();
    EXPECT_TRUE(session.waitForCalls());
    EXPECT_TRUE(second.isFinished());
    EXPECT_TRUE(second.isCanceled());
    EXPECT_FALSE(called);
}

TEST_F(SessionCalls, GoOnWithoutAnAnswerWhenTheyAreCancelledLater)
{
    bool ended = false;
    auto answered = session.run(serialNumber, [&, gone = go.get_future().share()](const auto& /*control*/) {
        begun.set_value();
        gone.wait();
        ended = true;
        return 1;
    });
    begun.get_future().wait();
    answered.cancel();
    go.set_value();
    EXPECT_TRUE(session.waitForCalls());
    EXPECT_TRUE(ended);
    EXPECT_EQ(answered.resultCount(), 0);
}

TEST_F(SessionCalls, LeaveTheOwnersThreadFreeAndAnswerThere)
{
    Window window;

    occupy();
    session.run(controls::serialNumber, [](auto& control) { return control.serialNumber(); })
        .then(&window, [&](const Number& number) { window.show(number); });
    QTimer::singleShot(std::chrono::minutes(5), &window.events, &QEventLoop::quit); // then it is a failure

    begun.get_future().wait(); // and this thread is here
    go.set_value();
    window.events.exec();
    EXPECT_EQ(window.shown, session.control(serialNumber)->serialNumber());
    EXPECT_EQ(window.shownOn, std::this_thread::get_id());
}

TEST_F(SessionCalls, EndBeforeTheSessionDoesAndAreTakenBackIfTheyHaveNotBegun)
{
    bool called = false;
    auto first = occupy();
    auto second = session.run(serialNumber, [&](const auto& /*control*/) { called = true; });
    begun.get_future().wait();
    std::thread watching([&] {
        const Patience patience("the call that has not begun is taken back"); // before the session waits
        while (!second.isFinished() && patience.lasts())
            std::this_thread::yield();
        EXPECT_TRUE(second.isCanceled());
        EXPECT_FALSE(first.isFinished());
        go.set_value();
    });
    owned.reset();
    EXPECT_TRUE(first.isFinished());
    watching.join();
    EXPECT_FALSE(called);
}

} // namespace tov::testing

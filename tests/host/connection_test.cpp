#include "host/instrumentsession.h"
#include "host/sessiononaconnection.h"
#include "patience.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "testing/fakecalibrationcontrol.h"

#include <gmock/gmock.h>

#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace tov::testing {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

} // namespace

TEST_F(SessionOnAConnection, TellsAtOnceWhatIsToldInTheOwnersThread)
{
    EXPECT_EQ(session->connection(), connection);
    connection->release();
    EXPECT_THAT(story, ElementsAre("second lets go", "first lets go", "released"));
    story.clear();
    connection->offer();
    EXPECT_THAT(story,
                ElementsAre("offered", "second lets go", "first lets go", "first comes back", "second comes back"));
}

TEST_F(SessionOnAConnection, KeepsTheControlsUntilTheOwnersThreadHasTold)
{
    onAnotherThread([this] { connection->release(); });
    EXPECT_THAT(story, IsEmpty()) << "nothing was let go of yet";
    session->passOnNotices();
    EXPECT_THAT(story, ElementsAre("second lets go", "first lets go", "released"));
    story.clear();
    onAnotherThread([this] { connection->offer(); });
    EXPECT_THAT(story, ElementsAre("offered"));
    session->passOnNotices();
    EXPECT_THAT(story,
                ElementsAre("offered", "second lets go", "first lets go", "first comes back", "second comes back"));
}

TEST_F(SessionOnAConnection, TellsOfBothWhenTheControlsWentWithoutAWord)
{
    connection->offer();
    EXPECT_THAT(story,
                ElementsAre("offered", "second lets go", "first lets go", "first comes back", "second comes back"));
}

TEST_F(SessionOnAConnection, TellsOnceOfAReleaseThatIsToldTwice)
{
    connection->release();
    connection->release();
    EXPECT_THAT(story, ElementsAre("second lets go", "first lets go", "released", "released"));
}

TEST_F(SessionOnAConnection, EndsWithTellingAndClosing)
{
    session.reset();
    EXPECT_THAT(story, ElementsAre("second lets go", "first lets go", "closed"));
}

TEST_F(SessionOnAConnection, LetsGoOfWhatWaitsWhenItEnds)
{
    onAnotherThread([this] { connection->release(); });
    session.reset();
    EXPECT_THAT(story, ElementsAre("second lets go", "first lets go", "released", "closed"));
}

TEST(SessionOnAFailingConnection, PassesThroughWhatAnAdapterThrowsAndGoesOn)
{
    class Throwing final : public devices::IControlLifecycleObserver
    {
    public:
        void onControlsAboutToBeReleased() override { throw std::runtime_error("stuck"); }
        void onControlsAvailable() override {}
    };

    std::vector<std::string> story;
    devices::ControlRegistry registry;
    add(registry, 1, [] { return std::make_shared<Throwing>(); });
    auto* const connection = new FakeConnection(std::make_shared<FakeInstrument>(), story);
    {
        host::InstrumentSession session(std::unique_ptr<provider::IConnection>(connection), std::move(registry));
        session.control(host::Control<Throwing>{{"throwing", {1, {}}}});
        onAnotherThread([&] { connection->release(); });
        EXPECT_THROW(session.passOnNotices(), std::runtime_error);
        EXPECT_THAT(story, ElementsAre("released"));
        session.passOnNotices();
        EXPECT_THROW(connection->offer(), std::runtime_error) << "told once more that they go";
    }
    EXPECT_THAT(story, ElementsAre("released", "offered", "closed")) << "the end of the session throws nothing";
}

// An adapter that could not let go of controls that were gone takes itself for attached.
TEST(SessionOnAFailingConnection, AttachesToNewControlsThoughTheOldWereGoneWhenTheirEndWasTold)
{
    class Silent final : public devices::service::SdkYqIfswCalibrationControl::Observer
    {
        void onFirstEvent() override {}
        void onSecondEvent() override {}
        void onThirdEvent() override {}
        void onStateChanged(devices::service::CalibrationState /*state*/) override {}
    };

    const auto& kind = host::controls::ifswCalibration;
    std::vector<std::string> story;
    const auto instrument = std::make_shared<FakeInstrument>();
    auto* const connection = new FakeConnection(instrument, story);
    using SdkControl = sdk::service::IYqIfswCalibrationControl;
    instrument->offer<SdkControl>(kind.keys.sdk, std::make_shared<FakeYqIfswCalibrationControl>());
    Silent observer;
    host::InstrumentSession session{std::unique_ptr<provider::IConnection>(connection)};
    session.control(kind)->addObserver(&observer);

    instrument->release(kind.keys.sdk);
    connection->tellOfRelease(nullptr);
    const auto fresh = std::make_shared<FakeYqIfswCalibrationControl>();
    instrument->offer<SdkControl>(kind.keys.sdk, fresh);
    connection->tellOfOffer();
    EXPECT_EQ(fresh->observers().size(), 1U);
}

// The owner's thread is inside a call that only the provider can answer, while the provider loses the instrument.
TEST(SessionOnAFailingConnection, SurvivesOneThatDiesDuringACall)
{
    class Dying final : public sdk::service::IMemorySerialNumberControl
    {
    public:
        explicit Dying(std::function<void()> die)
            : m_die(std::move(die))
        {
        }
        void readSerialNumber(std::function<void(unsigned int, std::error_code)> answer) override
        {
            m_thread = std::jthread([this, answer = std::move(answer)] {
                m_die();
                answer(0, std::make_error_code(std::errc::not_connected));
            });
        }
        void writeSerialNumber(unsigned int /*number*/, std::function<void(std::error_code)> answer) override
        {
            answer({});
        }
        void addObserver(Observer* /*observer*/) override {}
        void removeObserver(Observer* /*observer*/) override {}

    private:
        const std::function<void()> m_die;
        std::jthread m_thread;
    };

    namespace controls = host::controls;
    std::vector<std::string> story;
    const auto instrument = std::make_shared<FakeInstrument>();
    auto* const connection = new FakeConnection(instrument, story);
    const auto dying = std::make_shared<Dying>([&] { connection->release(); });
    instrument->offer<sdk::service::IMemorySerialNumberControl>(controls::serialNumber.keys.sdk, dying);

    host::InstrumentSession session{std::unique_ptr<provider::IConnection>(connection)};
    const auto serialNumber = session.control(controls::serialNumber);
    EXPECT_FALSE(serialNumber->serialNumber()) << "answered though the thread that is to let go waits";
    EXPECT_THAT(story, IsEmpty());
    session.passOnNotices();
    EXPECT_THAT(story, ElementsAre("released"));
}

// The provider's thread goes on telling while the owner's passes on.
TEST_F(SessionOnAConnection, KeepsTheOrderWhileTheProviderGoesOnTelling)
{
    constexpr int rounds = 200;
    std::atomic<bool> ended = false;
    std::thread provider([&] {
        for (int round = 0; round < rounds; ++round) {
            const auto going = std::make_shared<std::promise<void>>();
            connection->tellOfRelease(std::shared_ptr<void>(nullptr, [going](void* /*none*/) { going->set_value(); }));
            going->get_future().wait(); // until the adapters have heard
            connection->tellOfOffer();
        }
        ended = true;
    });
    for (const Patience patience("the provider has told everything"); !ended && patience.lasts();)
        session->passOnNotices();
    provider.join();
    session->passOnNotices();

    std::vector<std::string> expected;
    for (int round = 0; round < rounds; ++round)
        expected.insert(expected.end(), {"second lets go", "first lets go", "second lets go", "first lets go",
                                         "first comes back", "second comes back"});
    EXPECT_EQ(story, expected);
}

} // namespace tov::testing

#include "fakes/fakeinstrument.h"
#include "host/instrumentsession.h"
#include "host/toldadapter.h"
#include "provider/iconnection.h"
#include "sdk/service/imemoryserialnumbercontrol.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace tov::testing {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A connection to an instrument that the test releases and offers as it likes.
class FakeConnection final : public provider::IConnection
{
public:
    FakeConnection(std::shared_ptr<FakeInstrument> instrument, std::vector<std::string>& story)
        : m_instrument(std::move(instrument))
        , m_story(story)
    {
    }
    FakeConnection(const FakeConnection&) = delete;
    FakeConnection& operator=(const FakeConnection&) = delete;
    ~FakeConnection() override { m_story.emplace_back("closed"); }

    std::shared_ptr<sdk::IVna> instrument() override { return m_instrument; }
    void setListener(provider::IControlsListener* listener) override { m_listener = listener; }

    void release()
    {
        m_listener->onControlsAboutToBeReleased(
            std::shared_ptr<void>(nullptr, [this](void* /*none*/) { m_story.emplace_back("released"); }));
    }
    void offer()
    {
        m_story.emplace_back("offered");
        m_listener->onControlsOffered();
    }

private:
    const std::shared_ptr<FakeInstrument> m_instrument;
    std::vector<std::string>& m_story;
    provider::IControlsListener* m_listener = nullptr;
};

void onAnotherThread(const std::function<void()>& what)
{
    std::thread(what).join();
}

/// A session on a connection, with two adapters that are told.
class SessionOnAConnection : public ::testing::Test
{
protected:
    SessionOnAConnection()
    {
        session->control(host::Control<ToldAdapter>{{"first", {1, {}}}});
        session->control(host::Control<ToldAdapter>{{"second", {2, {}}}});
    }

    devices::ControlRegistry registryOfTwo()
    {
        devices::ControlRegistry registry;
        add(registry, 1, [this] { return std::make_shared<ToldAdapter>("first", story); });
        add(registry, 2, [this] { return std::make_shared<ToldAdapter>("second", story); });
        return registry;
    }

    std::vector<std::string> story;
    FakeConnection* connection = new FakeConnection(std::make_shared<FakeInstrument>(), story); // the session's
    std::unique_ptr<host::InstrumentSession> session =
        std::make_unique<host::InstrumentSession>(std::unique_ptr<provider::IConnection>(connection), registryOfTwo());
};

} // namespace

TEST_F(SessionOnAConnection, TellsAtOnceWhatIsToldInTheOwnersThread)
{
    EXPECT_EQ(session->connection(), connection);
    connection->release();
    EXPECT_THAT(story, ElementsAre("second lets go", "first lets go", "released"));
    story.clear();
    connection->offer();
    EXPECT_THAT(story, ElementsAre("offered", "first comes back", "second comes back"));
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
    EXPECT_THAT(story, ElementsAre("offered", "first comes back", "second comes back"));
}

TEST_F(SessionOnAConnection, TellsByTheEventLoopOfTheOwnersThread)
{
    onAnotherThread([this] {
        connection->release();
        connection->offer();
    });
    EXPECT_THAT(story, ElementsAre("offered")) << "the provider did not wait for the hold";
    QCoreApplication::processEvents();
    EXPECT_THAT(story, ElementsAre("offered", "second lets go", "first lets go", "released", "first comes back",
                                   "second comes back"));
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
    QCoreApplication::processEvents(); // nothing comes back to the session
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
        connection->offer();
    }
    EXPECT_THAT(story, ElementsAre("released", "offered", "closed")) << "the end of the session throws nothing";
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

} // namespace tov::testing

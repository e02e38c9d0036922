// The observers of a calibration when threads add, remove, release and make available at the same time: every order
// in which these can take turns around their calls into the SDK.

#include "interleavings.h"
#include "service/calibration/calibrations.h"

#include <array>
#include <memory>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

namespace tov::testing {

namespace {

using Adapter = IfswCalibration::Adapter;
using SdkIface = IfswCalibration::SdkIface;

class Counting final : public Adapter::Observer
{
public:
    void onFirstEvent() override { ++told; }
    void onSecondEvent() override {}
    void onThirdEvent() override {}
    void onStateChanged(devices::service::CalibrationState /*state*/) override {}

    int told = 0;
};

/// A control of the SDK that lives for the time of one connection.
class Connection final : public FakeCalibrationControl<SdkIface>
{
public:
    Connection(std::function<void()> pause, std::set<Connection*>& living, bool& diedInUse)
        : m_living(living)
        , m_diedInUse(diedInUse)
    {
        aroundRegistration = std::move(pause);
        m_living.insert(this);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() override
    {
        m_living.erase(this);
        m_diedInUse = m_diedInUse || !observers().empty();
    }

    void saveCalibrationData(CalibrationData /*data*/) override {}

private:
    std::set<Connection*>& m_living;
    bool& m_diedInUse;
};

/// What the threads of one try do.
enum class Do {
    Add,
    Remove,
    Detach,    ///< the controls are announced to go, but stay
    Attach,    ///< the controls are announced to be there
    Reconnect, ///< the controls go and come
};

/// One order of turns of `deeds`, each in a thread of its own. A failing SDK throws from one of its calls.
class Scene final : public Interleavings::Try
{
public:
    Scene(std::function<void()> pause, std::vector<Do> deeds, bool addedBefore, int failingCall)
        : m_deeds(std::move(deeds))
        , m_addedBefore(addedBefore)
        , m_pause([this, pause = std::move(pause), failingCall] {
            if (++m_calls == failingCall)
                throw std::runtime_error("the instrument failed");
            pause();
        })
    {
        offer();
        if (addedBefore)
            m_adapter.addObserver(&m_observer);
        m_calls = 0;
    }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    ~Scene() override { m_offered.reset(); }

    std::vector<std::function<void()>> operations() override
    {
        std::vector<std::function<void()>> all;
        for (const Do deed : m_deeds)
            all.emplace_back([this, deed] {
                try {
                    perform(deed);
                } catch (const std::runtime_error&) {
                    m_failed = true;
                }
            });
        return all;
    }

    // Whoever is registered is alive, and who was removed is not told.
    void look() override
    {
        m_observer.told = 0;
        for (const Connection* connection : m_living)
            for (auto* const observer : connection->observers())
                observer->onFirstEvent();
        if (m_removed && !doing(Do::Add)) {
            EXPECT_EQ(m_observer.told, 0) << "after it was removed";
        }
    }

    void lookAtTheEnd() override
    {
        if (!m_offered)
            offer();
        m_calls = -1000; // nor now
        if (isExact()) {
            EXPECT_FALSE(m_diedInUse) << "a control that is gone had an observer";
        }

        if (!isExact()) {
            m_adapter.onControlsAboutToBeReleased();
            m_offered.reset();
            offer();
        }
        m_adapter.onControlsAvailable();
        const std::size_t registered = m_offered->observers().size();
        look();
        EXPECT_LE(m_observer.told, 1);
        if (!doing(Do::Remove)) {
            EXPECT_EQ(m_observer.told, m_addedBefore || doing(Do::Add) ? 1 : 0);
        } else if (!doing(Do::Add)) {
            EXPECT_EQ(m_observer.told, 0);
        }
        if (isExact()) {
            EXPECT_EQ(m_observer.told, static_cast<int>(registered));
            m_adapter.onControlsAboutToBeReleased();
            EXPECT_EQ(m_offered->observers().size(), 0U);
            m_adapter.onControlsAvailable();
            EXPECT_EQ(m_offered->observers().size(), registered);
        }
        m_adapter.removeObserver(&m_observer);
        look();
        EXPECT_EQ(m_observer.told, 0);
    }

private:
    // Otherwise the table and the SDK agree only after the controls went and came once more.
    bool isExact() const { return !m_failed && !m_heldOver; }

    bool doing(Do deed) const { return std::ranges::find(m_deeds, deed) != m_deeds.end(); }

    void offer() { m_offered = std::make_shared<Connection>(m_pause, m_living, m_diedInUse); }

    void perform(Do deed)
    {
        switch (deed) {
        case Do::Add:
            return m_adapter.addObserver(&m_observer);
        case Do::Remove:
            try {
                m_adapter.removeObserver(&m_observer);
            } catch (const std::runtime_error&) {
                m_failed = true;
            }
            m_removed = true;
            return;
        case Do::Detach:
            return m_adapter.onControlsAboutToBeReleased();
        case Do::Attach:
            return m_adapter.onControlsAvailable();
        case Do::Reconnect:
            m_adapter.onControlsAboutToBeReleased();
            m_offered.reset();
            m_heldOver = !m_living.empty();
            m_pause();
            offer();
            return m_adapter.onControlsAvailable();
        }
    }

    const std::vector<Do> m_deeds;
    const bool m_addedBefore;
    const std::function<void()> m_pause;
    int m_calls = -1000; // none fails while the stage is set
    bool m_failed = false;
    bool m_removed = false;
    bool m_diedInUse = false;
    bool m_heldOver = false; // a call that was under way kept the old control when it went
    std::set<Connection*> m_living;
    Counting m_observer;
    std::shared_ptr<Connection> m_offered;
    Adapter m_adapter{devices::ReacquiringControl<SdkIface>([this] {
        if (m_calls >= 0 && m_deeds.size() < 3) // more would be too many orders
            m_pause();
        return sdk::ControlHandle<SdkIface>(m_offered);
    })};
};

void expectGoodInEveryOrder(const std::vector<Do>& deeds, int failingCall = 0)
{
    for (const bool addedBefore : {false, true}) {
        const std::size_t orders = Interleavings::explore([&](std::function<void()> pause) {
            return std::make_unique<Scene>(std::move(pause), deeds, addedBefore, failingCall);
        });
        EXPECT_GT(orders, 1U);
        ::testing::Test::RecordProperty(addedBefore ? "ordersWhenAddedBefore" : "orders", static_cast<int>(orders));
    }
}

} // namespace

TEST(CalibrationObserversInEveryOrder, AddedWhileTheControlsReconnect)
{
    expectGoodInEveryOrder({Do::Add, Do::Reconnect});
}

TEST(CalibrationObserversInEveryOrder, RemovedWhileTheControlsReconnect)
{
    expectGoodInEveryOrder({Do::Remove, Do::Reconnect});
}

TEST(CalibrationObserversInEveryOrder, AddedAndRemoved)
{
    expectGoodInEveryOrder({Do::Add, Do::Remove});
}

TEST(CalibrationObserversInEveryOrder, AddedTwiceAndRemoved)
{
    expectGoodInEveryOrder({Do::Add, Do::Add, Do::Remove});
}

TEST(CalibrationObserversInEveryOrder, AddedAndRemovedWhileTheControlsReconnect)
{
    expectGoodInEveryOrder({Do::Add, Do::Remove, Do::Reconnect});
}

TEST(CalibrationObserversInEveryOrder, AddedWhileTheControlsAreAnnouncedByTwo)
{
    expectGoodInEveryOrder({Do::Add, Do::Detach, Do::Attach});
}

TEST(CalibrationObserversInEveryOrder, RemovedWhileTheControlsAreAnnouncedByTwo)
{
    expectGoodInEveryOrder({Do::Remove, Do::Detach, Do::Attach});
}

TEST(CalibrationObserversInEveryOrder, OfAnSdkOfWhichOneCallFails)
{
    for (int failingCall = 1; failingCall <= 8; ++failingCall) {
        expectGoodInEveryOrder({Do::Add, Do::Reconnect}, failingCall);
        expectGoodInEveryOrder({Do::Remove, Do::Attach}, failingCall);
        expectGoodInEveryOrder({Do::Add, Do::Remove}, failingCall);
        expectGoodInEveryOrder({Do::Remove, Do::Reconnect}, failingCall);
        expectGoodInEveryOrder({Do::Remove, Do::Detach, Do::Attach}, failingCall);
    }
}

// The same without a scheduler: two threads add and remove an observer of their own, while the controls go and come.
TEST(CalibrationObserversUnderThreads, AreRegisteredAsTheTableSays)
{
    std::mutex mutex; // guards what is offered
    auto offered = std::make_shared<FakeYqIfswCalibrationControl>();
    Adapter adapter(devices::ReacquiringControl<SdkIface>([&] {
        const std::lock_guard guard(mutex);
        return sdk::ControlHandle<SdkIface>(offered);
    }));
    const auto offer = [&](std::shared_ptr<FakeYqIfswCalibrationControl> next) {
        const std::lock_guard guard(mutex);
        offered.swap(next);
    };

    constexpr int rounds = 2000;
    std::array<Counting, 2> observers;
    {
        std::vector<std::jthread> owners;
        for (Counting& observer : observers)
            owners.emplace_back([&] {
                for (int round = 0; round < rounds; ++round) {
                    adapter.addObserver(&observer);
                    adapter.removeObserver(&observer);
                }
                adapter.addObserver(&observer);
            });
        for (int round = 0; round < rounds; ++round) {
            adapter.onControlsAboutToBeReleased();
            offer(nullptr);
            offer(std::make_shared<FakeYqIfswCalibrationControl>());
            adapter.onControlsAvailable();
        }
    }

    adapter.onControlsAboutToBeReleased();
    adapter.onControlsAvailable();
    ASSERT_EQ(offered->observers().size(), 2U);
    for (auto* const registered : offered->observers())
        registered->onFirstEvent();
    for (Counting& observer : observers) {
        EXPECT_EQ(observer.told, 1);
        adapter.removeObserver(&observer);
    }
    EXPECT_TRUE(offered->observers().empty());
}

} // namespace tov::testing

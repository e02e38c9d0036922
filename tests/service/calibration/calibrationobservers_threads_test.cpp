// The observers of a calibration when threads add, remove, release and make available at the same time: every order
// in which these can take turns around their calls into the SDK.

#include "interleavings.h"
#include "service/calibration/calibrations.h"

#include <array>
#include <atomic>
#include <future>
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

/// What the threads of one try do.
enum class Do {
    Add,
    Remove,
    Detach,           ///< the controls are announced to go, but stay
    Attach,           ///< the controls are announced to be there
    Reconnect,        ///< the controls go and come
    AddAndDetach,     ///< the SDK announces that they go while it registers
    AddAndRemove,     ///< the observer is removed while the SDK registers it
    DetachAndAttach,  ///< the SDK announces that they are there while it lets go
    RemoveAndAddAnew, ///< the observer is added again while the SDK lets go of it
};

/// Where the threads give up their turns around what the SDK does.
enum class Pauses {
    Before,
    After,
    BeforeAndAfter,
};

/// One order of turns of `deeds`, each in a thread of its own. A failing SDK throws from one of its registrations.
class Scene final : public Interleavings::Try
{
public:
    Scene(std::function<void()> pause, std::vector<Do> deeds, Pauses pauses, bool addedBefore, int failingCall)
        : m_deeds(std::move(deeds))
        , m_pauses(pauses)
        , m_addedBefore(addedBefore)
        , m_pause(std::move(pause))
    {
        offer();
        if (addedBefore)
            m_adapter.addObserver(&m_observer);
        m_untilFailure = failingCall;
        m_isSet = true;
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
        if (m_removed && !adding()) {
            EXPECT_EQ(m_observer.told, 0) << "after it was removed";
        }
    }

    void lookAtTheEnd() override
    {
        m_isSet = false;
        if (!m_offered)
            offer();
        if (m_failed || m_heldOver) { // the observer waits for the controls, or for new ones
            m_adapter.onControlsAboutToBeReleased();
            m_offered.reset();
            offer();
        } else {
            EXPECT_FALSE(m_diedInUse) << "a control that is gone had an observer";
        }

        const std::size_t registeredAtRest = m_offered->observers().size();
        m_adapter.onControlsAvailable();
        const std::size_t registered = m_offered->observers().size();
        if (!m_failed && !m_heldOver && !doing(Do::Detach) && !doing(Do::AddAndDetach)) {
            EXPECT_EQ(registeredAtRest, registered) << "the controls were announced already";
        }
        m_adapter.onControlsAboutToBeReleased();
        EXPECT_EQ(m_offered->observers().size(), 0U) << "whoever is registered is known";
        m_adapter.onControlsAvailable();
        EXPECT_EQ(m_offered->observers().size(), registered);
        look();
        EXPECT_EQ(m_observer.told, static_cast<int>(registered));
        EXPECT_LE(m_observer.told, 1);
        if (!removing()) {
            EXPECT_EQ(m_observer.told, m_addedBefore || adding() ? 1 : 0);
        } else if (!adding()) {
            EXPECT_EQ(m_observer.told, 0);
        }
        m_adapter.removeObserver(&m_observer);
        look();
        EXPECT_EQ(m_observer.told, 0);
        EXPECT_EQ(m_offered->observers().size(), 0U);
    }

private:
    /// A control of the SDK that lives for the time of one connection.
    class Connection final : public FakeCalibrationControl<SdkIface>
    {
    public:
        explicit Connection(Scene& scene)
            : m_scene(scene)
        {
            m_scene.m_living.insert(this);
        }
        Connection(const Connection&) = delete;
        Connection& operator=(const Connection&) = delete;
        ~Connection() override
        {
            m_scene.m_living.erase(this);
            m_scene.m_diedInUse = m_scene.m_diedInUse || !observers().empty();
        }

        void addObserver(Observer* observer) override
        {
            m_scene.pauseBefore();
            if (m_scene.m_isSet && --m_scene.m_untilFailure == 0)
                throw std::runtime_error("the instrument failed");
            add(observer);
            m_scene.pauseAfter();
        }
        void removeObserver(Observer* observer) override
        {
            m_scene.pauseBefore();
            remove(observer);
            m_scene.pauseAfter();
        }
        void saveCalibrationData(CalibrationData /*data*/) override {}

    private:
        Scene& m_scene;
    };

    void pauseBefore()
    {
        if (m_isSet && m_pauses != Pauses::After)
            m_pause();
    }
    void pauseAfter()
    {
        if (m_isSet && m_pauses != Pauses::Before)
            m_pause();
        if (const auto next = std::exchange(s_meanwhile, nullptr))
            next();
    }

    bool doing(Do deed) const { return std::ranges::find(m_deeds, deed) != m_deeds.end(); }

    bool adding() const
    {
        return doing(Do::Add) || doing(Do::AddAndDetach) || doing(Do::AddAndRemove) || doing(Do::RemoveAndAddAnew);
    }
    bool removing() const { return doing(Do::Remove) || doing(Do::AddAndRemove) || doing(Do::RemoveAndAddAnew); }

    void offer() { m_offered = std::make_shared<Connection>(*this); }

    void add() { m_adapter.addObserver(&m_observer); }
    void remove()
    {
        m_adapter.removeObserver(&m_observer);
        m_removed = true;
    }
    void detach() { m_adapter.onControlsAboutToBeReleased(); }
    void attach() { m_adapter.onControlsAvailable(); }

    // Does `inner` inside the first call to the SDK of `outer`, if it makes one.
    void nest(void (Scene::*outer)(), void (Scene::*inner)())
    {
        s_meanwhile = [this, inner] { (this->*inner)(); };
        (this->*outer)();
        s_meanwhile = nullptr;
    }

    void perform(Do deed)
    {
        switch (deed) {
        case Do::Add:
            return add();
        case Do::Remove:
            return remove();
        case Do::Detach:
            return detach();
        case Do::Attach:
            return attach();
        case Do::Reconnect:
            detach();
            m_offered.reset();
            m_heldOver = !m_living.empty();
            m_pause();
            offer();
            return attach();
        case Do::AddAndDetach:
            return nest(&Scene::add, &Scene::detach);
        case Do::AddAndRemove:
            return nest(&Scene::add, &Scene::remove);
        case Do::DetachAndAttach:
            return nest(&Scene::detach, &Scene::attach);
        case Do::RemoveAndAddAnew:
            return nest(&Scene::remove, &Scene::add);
        }
    }

    inline static thread_local std::function<void()> s_meanwhile; // in the SDK's next call of this thread

    const std::vector<Do> m_deeds;
    const Pauses m_pauses;
    const bool m_addedBefore;
    const std::function<void()> m_pause;
    bool m_isSet = false; // the stage is
    int m_untilFailure = 0;
    bool m_failed = false;
    bool m_removed = false;
    bool m_diedInUse = false;
    bool m_heldOver = false; // a call that was under way kept the old control when it went
    std::set<Connection*> m_living;
    Counting m_observer;
    std::shared_ptr<Connection> m_offered;
    Adapter m_adapter{devices::ReacquiringControl<SdkIface>([this] {
        const bool pauses = m_isSet && m_deeds.size() < 3; // more would be too many orders
        if (pauses && m_pauses != Pauses::After)
            m_pause();
        const sdk::ControlHandle<SdkIface> found(m_offered);
        if (pauses && m_pauses != Pauses::Before)
            m_pause();
        return found;
    })};
};

void expectGoodInEveryOrder(const std::vector<Do>& deeds, std::vector<Pauses> pauses = {Pauses::BeforeAndAfter},
                            int failingCall = 0)
{
    for (const bool addedBefore : {false, true}) {
        std::size_t orders = 0;
        for (const Pauses each : pauses)
            orders += Interleavings::explore([&](std::function<void()> pause) {
                return std::make_unique<Scene>(std::move(pause), deeds, each, addedBefore, failingCall);
            });
        EXPECT_GT(orders, 1U);
        ::testing::Test::RecordProperty(addedBefore ? "ordersWhenAddedBefore" : "orders", static_cast<int>(orders));
    }
}

// Either side of what the SDK does: both at the same time would be too many orders.
const std::vector<Pauses> eachSide = {Pauses::Before, Pauses::After};

} // namespace

TEST(CalibrationObserversInEveryOrder, AddedWhileTheControlsReconnect)
{
    expectGoodInEveryOrder({Do::Add, Do::Reconnect}, eachSide);
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
    expectGoodInEveryOrder({Do::Add, Do::Add, Do::Remove}, eachSide);
}

TEST(CalibrationObserversInEveryOrder, AddedAndRemovedWhileTheControlsReconnect)
{
    expectGoodInEveryOrder({Do::Add, Do::Remove, Do::Reconnect}, eachSide);
}

TEST(CalibrationObserversInEveryOrder, AddedWhileTheControlsAreAnnouncedByTwo)
{
    expectGoodInEveryOrder({Do::Add, Do::Detach, Do::Attach}, eachSide);
}

TEST(CalibrationObserversInEveryOrder, RemovedWhileTheControlsAreAnnouncedByTwo)
{
    expectGoodInEveryOrder({Do::Remove, Do::Detach, Do::Attach}, eachSide);
}

TEST(CalibrationObserversInEveryOrder, WhenTheSdkCallsBackMeanwhile)
{
    for (const Do nested : {Do::AddAndDetach, Do::AddAndRemove, Do::DetachAndAttach, Do::RemoveAndAddAnew})
        for (const Do other : {Do::Add, Do::Remove, Do::Detach, Do::Attach, Do::Reconnect})
            expectGoodInEveryOrder({nested, other}, eachSide);
}

TEST(CalibrationObserversInEveryOrder, WhenTheSdkCallsBackMeanwhileOfThree)
{
    expectGoodInEveryOrder({Do::AddAndDetach, Do::Remove, Do::Attach}, eachSide);
    expectGoodInEveryOrder({Do::DetachAndAttach, Do::Remove, Do::Add}, eachSide);
}

TEST(CalibrationObserversInEveryOrder, OfAnSdkOfWhichOneRegistrationFails)
{
    for (int failingCall = 1; failingCall <= 4; ++failingCall) {
        expectGoodInEveryOrder({Do::Add, Do::Reconnect}, eachSide, failingCall);
        expectGoodInEveryOrder({Do::Remove, Do::Attach}, eachSide, failingCall);
        expectGoodInEveryOrder({Do::Add, Do::Remove}, eachSide, failingCall);
        expectGoodInEveryOrder({Do::Remove, Do::Reconnect}, eachSide, failingCall);
        expectGoodInEveryOrder({Do::Remove, Do::Detach, Do::Attach}, eachSide, failingCall);
    }
}

TEST(CalibrationObserversUnderThreads, AreNotToldOnceTheyAreRemovedByTheSideOfTheirRegistration)
{
    const auto fake = std::make_shared<FakeYqIfswCalibrationControl>();
    Adapter adapter(devices::ReacquiringControl<SdkIface>([&] { return sdk::ControlHandle<SdkIface>(fake); }));
    Counting observer;
    std::promise<void> registering;
    std::promise<void> askedToLetGo;
    std::promise<void> registered;
    const std::thread::id owner = std::this_thread::get_id();
    int steps = 0; // of the thread that registers
    fake->aroundRegistration = [&] {
        if (std::this_thread::get_id() != owner) {
            if (++steps == 1) {
                registering.set_value();
                askedToLetGo.get_future().wait();
            } else if (steps == 2) {
                fake->observers().back()->onFirstEvent();
                registered.set_value();
            }
        }
    };
    std::jthread other([&] { adapter.addObserver(&observer); });
    registering.get_future().wait();
    int ownSteps = 0;
    fake->duringCall = [&] {
        if (std::this_thread::get_id() == owner && ++ownSteps == 1) {
            askedToLetGo.set_value();
            registered.get_future().wait();
        }
    };
    adapter.removeObserver(&observer);
    EXPECT_EQ(observer.told, 0);
    other.join();
    EXPECT_TRUE(fake->observers().empty());
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

// The same of an SDK of which every other registration fails: the observer waits for the controls then.
TEST(CalibrationObserversUnderThreads, AreRegisteredAsTheTableSaysByAFailingSdk)
{
    class Failing final : public FakeCalibrationControl<SdkIface>
    {
    public:
        std::atomic<bool> fails = true;

        void addObserver(Observer* observer) override
        {
            if (fails && ++m_calls % 2 == 0)
                throw std::runtime_error("the instrument failed");
            add(observer);
        }
        void removeObserver(Observer* observer) override { remove(observer); }
        void saveCalibrationData(CalibrationData /*data*/) override {}

    private:
        std::atomic<int> m_calls = 0;
    };

    const auto fake = std::make_shared<Failing>();
    Adapter adapter(devices::ReacquiringControl<SdkIface>([&] { return sdk::ControlHandle<SdkIface>(fake); }));
    Counting observer;
    constexpr int rounds = 2000;
    const auto repeat = [&](auto deed) {
        for (int round = 0; round < rounds; ++round)
            try {
                deed();
            } catch (const std::runtime_error&) { // from every other registration
            }
    };
    {
        const std::jthread owner([&] {
            repeat([&] {
                adapter.removeObserver(&observer);
                adapter.addObserver(&observer);
            });
        });
        repeat([&] {
            adapter.onControlsAboutToBeReleased();
            adapter.onControlsAvailable();
        });
    }

    fake->fails = false;
    adapter.onControlsAboutToBeReleased();
    adapter.onControlsAvailable();
    ASSERT_EQ(fake->observers().size(), 1U);
    fake->observers().front()->onFirstEvent();
    EXPECT_EQ(observer.told, 1);
    adapter.removeObserver(&observer);
    EXPECT_TRUE(fake->observers().empty());
}

} // namespace tov::testing

#include "devices/reacquiringcontrol.h"
#include "fakes/fakeinstrument.h"
#include "service/tuning/sdkloleakagecontrol.h"

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <memory>
#include <thread>
#include <vector>

namespace tov::testing {

namespace {

constexpr sdk::Key key{1};
constexpr int threads = 4;

/// What the instrument remembers across its controls.
struct Memory
{
    std::atomic<long> calls = 0;
    std::atomic<long> callsOnDead = 0;
};

/// A control that notices calls before its life, after it and across its end.
class MortalControl final : public sdk::service::ILoLeakageControl
{
public:
    explicit MortalControl(Memory& memory)
        : m_memory(memory)
    {
    }
    MortalControl(const MortalControl&) = delete;
    MortalControl& operator=(const MortalControl&) = delete;
    ~MortalControl() override
    {
        if (m_inside != 0)
            ++m_memory.callsOnDead;
        m_alive = false;
    }

    bool isEnabled() override
    {
        ++m_inside;
        std::this_thread::yield();
        m_memory.callsOnDead += m_alive ? 0 : 1;
        ++m_memory.calls;
        --m_inside;
        return true;
    }
    void setEnabled(bool) override {}

private:
    Memory& m_memory;
    std::atomic<bool> m_alive = true;
    std::atomic<int> m_inside = 0;
};

class ReacquiringControlUnderThreads : public ::testing::Test
{
protected:
    /// Runs `use` on several threads again and again while the control is released and offered
    /// `rounds` times.
    template <typename Use>
    void flicker(int rounds, Use use)
    {
        std::atomic<bool> stop = false;
        std::barrier start(threads + 1);
        std::vector<std::jthread> users;
        for (int i = 0; i < threads; ++i)
            users.emplace_back([&] {
                start.arrive_and_wait();
                while (!stop)
                    use();
            });

        start.arrive_and_wait();
        for (int round = 0; round < rounds; ++round) {
            instrument.release(key);
            if (round % 2 == 0)
                std::this_thread::yield();
            offer();
        }
        stop = true;
    }

    void offer() { instrument.offer<sdk::service::ILoLeakageControl>(key, std::make_shared<MortalControl>(memory)); }

    using Reacquiring = devices::ReacquiringControl<sdk::service::ILoLeakageControl>;
    Reacquiring makeReacquiring()
    {
        return Reacquiring([this] {
            return Reacquiring::Handle(
                std::static_pointer_cast<sdk::service::ILoLeakageControl>(instrument.findControl(key)));
        });
    }

    Memory memory;
    FakeInstrument instrument;
};

} // namespace

TEST_F(ReacquiringControlUnderThreads, LosesNoCallAndMakesNoneOnADeadControl)
{
    const Reacquiring control = makeReacquiring();
    std::atomic<long> made = 0;

    flicker(5000, [&] {
        if (const auto locked = control.lock()) {
            ASSERT_EQ(locked.control, locked.keepAlive.get()) << "a torn handle";
            locked->isEnabled();
            ++made;
        }
    });

    EXPECT_EQ(memory.calls, made);
    EXPECT_EQ(memory.callsOnDead, 0);
    EXPECT_TRUE(control.lock()) << "the control that was offered last is found";
}

TEST_F(ReacquiringControlUnderThreads, CopiesAnAdapterWhileItReacquires)
{
    devices::service::SdkLoLeakageControl adapter(makeReacquiring());

    flicker(2000, [&] {
        adapter.isEnabled();
        const devices::service::SdkLoLeakageControl copy(adapter);
        copy.isEnabled();
    });

    EXPECT_EQ(memory.callsOnDead, 0);
    EXPECT_TRUE(adapter.isEnabled());
    EXPECT_TRUE(devices::service::SdkLoLeakageControl(adapter).isEnabled());
}

TEST_F(ReacquiringControlUnderThreads, DestroysTheControlWithTheLastUserWhenTheInstrumentLetGoFirst)
{
    offer();
    const Reacquiring control = makeReacquiring();
    std::barrier released(2);

    std::jthread user([&] {
        auto locked = control.lock();
        released.arrive_and_wait();
        released.arrive_and_wait();
        EXPECT_TRUE(locked->isEnabled());
        EXPECT_EQ(locked.keepAlive.use_count(), 1);
    });
    released.arrive_and_wait();
    instrument.release(key);
    released.arrive_and_wait();
    user.join();

    EXPECT_EQ(memory.calls, 1);
    EXPECT_EQ(memory.callsOnDead, 0);
    EXPECT_FALSE(control.lock());
}

} // namespace tov::testing

#include "devices/reacquiringcontrol.h"
#include "patience.h"
#include "rendezvous.h"
#include "service/tuning/sdkloleakagecontrol.h"
#include "testing/fakeinstrument.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <set>
#include <string>
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
    std::atomic<long> sets = 0;         // accepted calls, whichever control they reached
    std::atomic<long> callsOnDead = 0;  // calls before a control's life, after it and across its end
    std::atomic<long> controlsUsed = 0; // controls that were reached by at least one call
    std::atomic<long> controlsMade = 0;
    std::function<void()> duringSomeCalls;
};

/// The control that the thread reached last, by the number that it got when it was made.
thread_local long reachedLast = 0;

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
        m_self = nullptr;
    }

    bool isEnabled() override
    {
        enter();
        return true;
    }
    void setEnabled(bool) override
    {
        enter();
        ++m_memory.sets;
    }

private:
    void enter()
    {
        ++m_inside;
        if (m_memory.calls++ % 64 == 0 && m_memory.duringSomeCalls)
            m_memory.duringSomeCalls();
        if (m_self != this)
            ++m_memory.callsOnDead;
        if (!m_used.exchange(true))
            ++m_memory.controlsUsed;
        reachedLast = m_number;
        --m_inside;
    }

    Memory& m_memory;
    const long m_number = ++m_memory.controlsMade;
    std::atomic<MortalControl*> m_self = this;
    std::atomic<bool> m_used = false;
    std::atomic<int> m_inside = 0;
};

class ReacquiringControlUnderThreads : public ::testing::Test
{
protected:
    /// On several threads at once, again and again: releases the control, uses it, offers a new one and uses it
    /// again; now and then the release comes inside a call. Who finds what depends on what the others just did. Nobody
    /// leaves before `use` has told of each thread that it reached some different controls: one that is preempted
    /// inside a call keeps its control for all.
    template <typename Use>
    void flicker(Use use)
    {
        constexpr int rounds = 2000;
        constexpr std::size_t controlsEach = 10;
        const Patience patience("every thread has reached its controls");
        memory.duringSomeCalls = [this] { instrument.release(key); };
        Rendezvous start(threads);
        std::atomic<int> content = 0;
        std::vector<std::jthread> users;
        for (int i = 0; i < threads; ++i)
            users.emplace_back([&] {
                std::set<long> reached;
                const auto useAndNote = [&] {
                    if (use() && reached.size() < controlsEach && reached.insert(reachedLast).second
                        && reached.size() == controlsEach)
                        ++content;
                };
                start.arriveAndWait();
                for (int round = 0; round < rounds || (content < threads && patience.lasts()); ++round) {
                    instrument.release(key);
                    useAndNote();
                    offer();
                    useAndNote();
                    useAndNote();
                }
                offer();
            });
        users.clear();
        memory.duringSomeCalls = nullptr;
    }

    void offer() { instrument.offer<sdk::service::ILoLeakageControl>(key, std::make_shared<MortalControl>(memory)); }

    sdk::service::ILoLeakageControl* offered() { return find().lock().control; }

    using Reacquiring = devices::ReacquiringControl<sdk::service::ILoLeakageControl>;
    Reacquiring::Handle find()
    {
        return std::static_pointer_cast<sdk::service::ILoLeakageControl>(instrument.findControl(key));
    }
    Reacquiring makeReacquiring()
    {
        return Reacquiring([this] { return find(); });
    }

    Memory memory;
    FakeInstrument instrument;
};

} // namespace

TEST_F(ReacquiringControlUnderThreads, LosesNoUpdateAndCallsNoDeadControl)
{
    const Reacquiring control = makeReacquiring();
    std::atomic<long> lent = 0;

    flicker([&] {
        const auto locked = control.lock();
        if (locked) {
            locked->setEnabled(true);
            ++lent;
        }
        return static_cast<bool>(locked);
    });

    EXPECT_GT(memory.controlsUsed, threads);
    EXPECT_EQ(memory.sets, lent) << "every control that was lent took its update";
    EXPECT_EQ(memory.callsOnDead, 0);
    EXPECT_EQ(control.lock().control, offered()) << "the control that was offered last";
}

TEST_F(ReacquiringControlUnderThreads, CopiesAnAdapterWhileItReacquires)
{
    const devices::service::SdkLoLeakageControl adapter(makeReacquiring());
    std::atomic<long> reachedByCopies = 0;

    flicker([&] {
        adapter.isEnabled();
        const devices::service::SdkLoLeakageControl copy(adapter);
        const bool reached = copy.isEnabled();
        reachedByCopies += reached ? 1 : 0;
        return reached;
    });

    EXPECT_EQ(memory.callsOnDead, 0);
    EXPECT_GT(memory.controlsUsed, threads);
    EXPECT_GT(reachedByCopies, 0);
    EXPECT_TRUE(adapter.isEnabled());
    const devices::service::SdkLoLeakageControl copy(adapter);
    EXPECT_TRUE(copy.isEnabled());
}

TEST_F(ReacquiringControlUnderThreads, AsksOnceInEachThreadThatFindsTheControlGoneAndKeepsAnAnswer)
{
    Rendezvous bothAsk(2);
    std::atomic<int> asked = -1; // the first time is when it is made
    const Reacquiring control([&] {
        if (++asked > 0)
            bothAsk.arriveAndWait();
        return find();
    });
    offer();

    std::vector<std::jthread> users;
    for (int i = 0; i < 2; ++i)
        users.emplace_back([&] { EXPECT_EQ(control.lock().control, offered()); });
    users.clear();

    EXPECT_EQ(asked, 2) << "no thread waited for the other's answer";
    EXPECT_EQ(control.lock().control, offered());
    EXPECT_EQ(asked, 2);
}

TEST_F(ReacquiringControlUnderThreads, DestroysTheControlWithTheLastUserWhenTheInstrumentLetGoFirst)
{
    offer();
    const Reacquiring control = makeReacquiring();
    Rendezvous released(2);

    std::jthread user([&] {
        auto locked = control.lock();
        released.arriveAndWait();
        released.arriveAndWait();
        locked->setEnabled(true);
        EXPECT_EQ(locked.keepAlive.use_count(), 1);
    });
    released.arriveAndWait();
    instrument.release(key);
    released.arriveAndWait();
    user.join();

    EXPECT_EQ(memory.sets, 1);
    EXPECT_EQ(memory.callsOnDead, 0);
    EXPECT_FALSE(control.lock());
}

} // namespace tov::testing

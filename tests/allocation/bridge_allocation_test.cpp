#include "allocation/allocationcounter.h"
#include "devices/reacquiringcontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "service/memory/ifilememorycontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"
#include "service/support/blockingbridge.h"
#include "service/support/stackarena.h"

#include <gtest/gtest.h>

#include <memory>
#include <semaphore>
#include <thread>
#include <utility>
#include <vector>

namespace tov::testing {

namespace {

using sdk::service::IMemorySerialNumberControl;

/// Answers without allocating anything itself, at once or by a thread that is already there.
class BareSerialNumberControl final : public IMemorySerialNumberControl
{
public:
    bool later = false;

    BareSerialNumberControl() = default;
    BareSerialNumberControl(const BareSerialNumberControl&) = delete;
    BareSerialNumberControl& operator=(const BareSerialNumberControl&) = delete;
    ~BareSerialNumberControl() override
    {
        m_asked.release(); // asks nothing
        m_thread.join();
    }

    void readSerialNumber(std::function<void(unsigned int, std::error_code)> answer) override
    {
        if (!later)
            return answer(777, {});
        m_answer = std::move(answer);
        m_asked.release();
    }
    void writeSerialNumber(unsigned int, std::function<void(std::error_code)> answer) override { answer({}); }
    void addObserver(Observer*) override {}
    void removeObserver(Observer*) override {}

private:
    std::function<void(unsigned int, std::error_code)> m_answer;
    std::binary_semaphore m_asked{0};
    std::thread m_thread{[this] {
        for (;;) {
            m_asked.acquire();
            const auto answer = std::exchange(m_answer, nullptr);
            if (!answer)
                return;
            answer(778, {});
        }
    }};
};

} // namespace

#ifdef __GLIBCXX__
constexpr long allowedPerCall = 0;
#else
constexpr long allowedPerCall = 1;
#endif

TEST(Allocation, IsNotMadeByABridgedCallOfAnAdapterOnAnyThread)
{
    const auto bare = std::make_shared<BareSerialNumberControl>();
    devices::service::SdkSerialNumberControl control(devices::ReacquiringControl<IMemorySerialNumberControl>([bare] {
        return sdk::ControlHandle<IMemorySerialNumberControl>(std::shared_ptr<IMemorySerialNumberControl>(bare));
    }));

    for (const bool later : {false, true}) {
        bare->later = later;
        const long before = allocationsOfAllThreads();
        const auto number = control.serialNumber();
        const auto written = control.writeSerialNumber(1);
        EXPECT_LE(allocationsOfAllThreads() - before, 2 * allowedPerCall);
        EXPECT_EQ(number, later ? 778U : 777U);
        EXPECT_TRUE(written);
    }
}

namespace {

/// Every result type of a bridged operation.
template <typename Result>
class AllocationOfResult : public ::testing::Test
{
};

using devices::service::IFileMemoryControl;

enum class Error : std::uint32_t { Failed = 0 };
using Results =
    ::testing::Types<bool, std::expected<void, QString>, std::expected<QByteArray, QString>,
                     std::expected<IFileMemoryControl::SpaceInfo, QString>,
                     std::expected<QList<IFileMemoryControl::FileInfo>, QString>, std::expected<void, Error>,
                     std::expected<int, Error>, std::expected<std::vector<std::byte>, Error>>;

struct Nothing
{
};

/// Answers a bridged call of this result type at once, with an empty value if it has one.
template <typename Result>
struct Answering
{
    void operator()(Nothing& /*control*/, const std::function<void(std::error_code)>& answer) const { answer({}); }
};

template <typename Value, typename Failure>
    requires(!std::is_void_v<Value>)
struct Answering<std::expected<Value, Failure>>
{
    void operator()(Nothing& /*control*/, const std::function<void(Value, std::error_code)>& answer) const
    {
        answer(Value(), {});
    }
};

} // namespace

TYPED_TEST_SUITE(AllocationOfResult, Results);

TYPED_TEST(AllocationOfResult, IsNotMadeByTheBridge)
{
    Nothing control;
    const long before = allocations();
    EXPECT_TRUE(devices::service::callAndWait<TypeParam>(control, Answering<TypeParam>()));
    EXPECT_LE(allocations() - before, allowedPerCall);
}

TEST(StackArenaAllocation, FreesWhatDidNotFitWhereverTheArenaIs)
{
    static devices::service::StackArena<64> below; // the heap
    devices::service::StackArena<64> above;
    const HeapBytes heap;
    for (auto* const arena : {&below, &above}) {
        void* const block = arena->allocate(65);
        EXPECT_GT(heap.now(), 0);
        arena->deallocate(block);
        EXPECT_EQ(heap.now(), 0);
        arena->deallocate(arena->allocate(64));
        EXPECT_EQ(heap.now(), 0) << "this one was not the heap's";
    }
}

TEST(StackArenaAllocation, IsFreedByAContainerThatGrewOutOfTheArena)
{
    using Arena = devices::service::StackArena<64>;
    using Allocator = devices::service::StackAllocator<int, Arena>;
    const HeapBytes heap;
    {
        Arena arena;
        const std::vector<int, Allocator> numbers(100, 0, Allocator(arena));
        EXPECT_GT(heap.now(), 0);
    }
    EXPECT_EQ(heap.now(), 0);
}

} // namespace tov::testing

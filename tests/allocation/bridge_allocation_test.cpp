#include "allocation/allocationcounter.h"
#include "devices/reacquiringcontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"

#include <gtest/gtest.h>

#include <memory>
#include <semaphore>
#include <thread>
#include <utility>

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

TEST(Allocation, IsMadeAtMostOnceByABridgedCall)
{
    const auto bare = std::make_shared<BareSerialNumberControl>();
    devices::service::SdkSerialNumberControl control(devices::ReacquiringControl<IMemorySerialNumberControl>([bare] {
        return sdk::ControlHandle<IMemorySerialNumberControl>(std::shared_ptr<IMemorySerialNumberControl>(bare));
    }));

    for (const bool later : {false, true}) {
        bare->later = later;
        const long before = allocations();
        const auto number = control.serialNumber();
        const auto written = control.writeSerialNumber(1);
        EXPECT_LE(allocations() - before, 2) << "two calls";
        EXPECT_EQ(number, later ? 778U : 777U);
        EXPECT_TRUE(written);
    }
}

#ifdef __GLIBCXX__
TEST(Allocation, IsNeverMadeByABridgedCallWithThisStandardLibrary)
{
    const auto bare = std::make_shared<BareSerialNumberControl>();
    const devices::service::SdkSerialNumberControl control(
        devices::ReacquiringControl<IMemorySerialNumberControl>([bare] {
            return sdk::ControlHandle<IMemorySerialNumberControl>(std::shared_ptr<IMemorySerialNumberControl>(bare));
        }));

    for (const bool later : {false, true}) {
        bare->later = later;
        const long before = allocations();
        EXPECT_TRUE(control.serialNumber());
        EXPECT_EQ(allocations() - before, 0);
    }
}
#endif

} // namespace tov::testing

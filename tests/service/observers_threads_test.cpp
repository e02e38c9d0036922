// Observers of the application are added, removed and told from different threads.

#include "patience.h"
#include "rendezvous.h"
#include "service/memory/sdkmemoryoperationscontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"
#include "service/memory/sdksystemtermscontrol.h"
#include "testing/fakememoryoperationscontrol.h"
#include "testing/fakememoryserialnumbercontrol.h"
#include "testing/fakesystemtermscontrol.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace tov::testing {

namespace {

using namespace devices::service;

/// Observes every control and knows whether it may be told now.
class Guarded final : public ISerialNumberControl::Observer,
                      public IMemoryOperationsControl::IObserver,
                      public ISystemTermsControl::Observer
{
public:
    void onSerialNumberEvent(const SerialNumberEvent&) override { tell(); }
    void onNotification1(const MemoryOperationEvent&) override { tell(); }
    void onNotification2(const MemoryOperationEvent&) override { tell(); }
    void onNotification3(const MemoryOperationEvent&) override { tell(); }
    void onNotification4(const MemoryOperationEvent&) override { tell(); }
    void onTermsNotice() override { tell(); }
    void onTermsValue(unsigned int) override { tell(); }
    void onTermsSecondNotice() override { tell(); }
    void onTermsStatus(ISystemTermsControl::Status) override { tell(); }

    std::atomic<bool> added = false;
    std::atomic<long> told = 0;
    std::atomic<long> toldAfterRemoval = 0;

private:
    void tell()
    {
        ++told;
        toldAfterRemoval += added ? 0 : 1;
    }
};

/// Two threads notify without end while two others add and remove an observer of their own, until each was told.
template <typename Adapter, typename Notify>
void addAndRemoveWhileNotified(Adapter& adapter, Notify notify)
{
    std::atomic<bool> stop = false;
    std::vector<std::jthread> notifiers;
    for (int i = 0; i < 2; ++i)
        notifiers.emplace_back([&] {
            while (!stop) {
                notify();
                std::this_thread::yield(); // or the owners would hardly ever find the list unlocked
            }
        });

    std::vector<Guarded> observers(2);
    {
        const Patience patience("every observer was told");
        Rendezvous start(2);
        std::vector<std::jthread> owners;
        for (Guarded& observer : observers)
            owners.emplace_back([&] {
                start.arriveAndWait();
                for (int round = 0; round < 200 || (observer.told == 0 && patience.lasts()); ++round) {
                    observer.added = true;
                    adapter.addObserver(&observer);
                    adapter.addObserver(&observer);
                    std::this_thread::yield();
                    adapter.removeObserver(&observer);
                    observer.added = false;
                }
            });
    }
    stop = true;
    notifiers.clear();

    for (const Guarded& observer : observers) {
        EXPECT_GT(observer.told, 0);
        EXPECT_EQ(observer.toldAfterRemoval, 0);
    }
}

template <typename SdkIface, typename Fake>
devices::ReacquiringControl<SdkIface> handleOf(const std::shared_ptr<Fake>& fake)
{
    return devices::ReacquiringControl<SdkIface>(
        [fake] { return sdk::ControlHandle<SdkIface>(std::shared_ptr<SdkIface>(fake)); });
}

} // namespace

TEST(ObserversUnderThreads, OfTheSerialNumber)
{
    const auto fake = std::make_shared<FakeMemorySerialNumberControl>();
    SdkSerialNumberControl adapter(handleOf<sdk::service::IMemorySerialNumberControl>(fake));
    auto* const sdkObserver = fake->observers().front();
    addAndRemoveWhileNotified(adapter, [&] { sdkObserver->onSerialNumberEvent(1, 2); });
}

TEST(ObserversUnderThreads, OfTheMemoryOperations)
{
    const auto fake = std::make_shared<FakeMemoryOperationsControl>();
    SdkMemoryOperationsControl adapter(handleOf<sdk::service::IMemoryOperationsControl>(fake));
    auto* const sdkObserver = fake->observers().front();
    addAndRemoveWhileNotified(adapter, [&] { sdkObserver->onNotification1(1, 2); });
}

TEST(ObserversUnderThreads, OfTheSystemTerms)
{
    const auto fake = std::make_shared<FakeSystemTermsControl>();
    SdkSystemTermsControl adapter(handleOf<sdk::service::ISystemTermsControl>(fake));
    auto* const sdkObserver = fake->observers().front();
    addAndRemoveWhileNotified(adapter, [&] { sdkObserver->onTermsStatus(3); });
}

} // namespace tov::testing

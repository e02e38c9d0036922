#include "allocation/allocationcounter.h"
#include "sdk/service/iloleakagecontrol.h"
#include "sdk/service/iyqsynthesiscontrol.h"
#include "service/tuning/sdkloleakagecontrol.h"
#include "service/tuning/sdkyqsynthesiscontrol.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <new>

namespace tov::testing {

namespace {

using devices::service::SdkLoLeakageControl;
using devices::service::SdkYqSynthesisControl;

/// A control that allocates nothing itself.
class BareLoLeakageControl final : public sdk::service::ILoLeakageControl
{
public:
    bool isEnabled() override { return m_enabled; }
    void setEnabled(bool enabled) override { m_enabled = enabled; }

private:
    bool m_enabled = false;
};

class BareYqSynthesisControl final : public sdk::service::IYqSynthesisControl
{
public:
    void enableManualIf(bool) override {}
    bool manualIfEnabled() override { return true; }
    void setSelectedIf(int) override {}
    int selectedIf() override { return 1; }
    std::span<const double> supportedIfs() override { return m_ifs; }

private:
    std::array<double, 3> m_ifs = {1.0, 2.0, 3.0};
};

template <typename SdkIface, typename Bare>
struct Fixture
{
    std::shared_ptr<SdkIface> control = std::make_shared<Bare>();
    devices::ReacquiringControl<SdkIface> handle{[this] { return sdk::ControlHandle<SdkIface>(control); }};
};

template <typename Action>
long allocationsOf(Action action)
{
    const long before = allocations();
    action();
    return allocations() - before;
}

} // namespace

TEST(Allocation, IsSeenByTheCounter)
{
    EXPECT_EQ(allocationsOf([] { ::operator delete(::operator new(7)); }), 1);
}

TEST(Allocation, IsNeverMadeByALiveGetterOrSetter)
{
    const Fixture<sdk::service::ILoLeakageControl, BareLoLeakageControl> loLeakage;
    SdkLoLeakageControl adapter(loLeakage.handle);

    EXPECT_EQ(allocationsOf([&] {
                  for (int i = 0; i < 100; ++i) {
                      adapter.setEnabled(!adapter.isEnabled());
                  }
              }),
              0);
}

TEST(Allocation, IsMadeOnceForACopiedList)
{
    const Fixture<sdk::service::IYqSynthesisControl, BareYqSynthesisControl> yq;
    const SdkYqSynthesisControl adapter(yq.handle);
    EXPECT_EQ(allocationsOf([&] { adapter.supportedIfs(); }), 1);
}

TEST(Allocation, FailureWhileAListIsCopiedPassesOnAndLetsGoOfTheControl)
{
    const Fixture<sdk::service::IYqSynthesisControl, BareYqSynthesisControl> yq;
    const SdkYqSynthesisControl adapter(yq.handle);
    const auto copyWithoutMemory = [&] {
        const FailingAllocations failing;
        return adapter.supportedIfs();
    };

    EXPECT_THROW(copyWithoutMemory(), std::bad_alloc);
    EXPECT_EQ(yq.control.use_count(), 1);
    EXPECT_EQ(adapter.supportedIfs().size(), 3U);
}

} // namespace tov::testing

#include "devices/icontrollifecycleobserver.h"
#include "sdk/ivna.h"
#include "sdk/service/iloleakagecontrol.h"
#include "sdk/service/iyqsynthesiscontrol.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

// Reads the slot out of a member pointer, as the Itanium ABI lays it out on x86-64: the first word holds the
// byte offset into the table of virtual functions plus one, and the destructor has two entries.
#if defined(__x86_64__) && !defined(_MSC_VER)

namespace tov::testing {

namespace {

template <typename Method>
std::size_t slot(Method method)
{
    std::size_t firstWord = 0;
    std::memcpy(&firstWord, &method, sizeof firstWord);
    return (firstWord - 1) / sizeof(void*) - 1;
}

} // namespace

TEST(SlotOrder, OfTheInstrument)
{
    EXPECT_EQ(slot(&sdk::IVna::reserved1), 1U);
    EXPECT_EQ(slot(&sdk::IVna::findControl), 2U);
}

TEST(SlotOrder, OfTheLifecycleObserver)
{
    using devices::IControlLifecycleObserver;
    EXPECT_EQ(slot(&IControlLifecycleObserver::onControlsAboutToBeReleased), 1U);
    EXPECT_EQ(slot(&IControlLifecycleObserver::onControlsAvailable), 2U);
}

TEST(SlotOrder, OfTheLoLeakageControl)
{
    using sdk::service::ILoLeakageControl;
    EXPECT_EQ(slot(&ILoLeakageControl::reserved1), 1U);
    EXPECT_EQ(slot(&ILoLeakageControl::isEnabled), 2U);
    EXPECT_EQ(slot(&ILoLeakageControl::setEnabled), 3U);
}

TEST(SlotOrder, OfTheYqSynthesisControl)
{
    using sdk::service::IYqSynthesisControl;
    EXPECT_EQ(slot(&IYqSynthesisControl::reserved1), 1U);
    EXPECT_EQ(slot(&IYqSynthesisControl::enableManualIf), 2U);
    EXPECT_EQ(slot(&IYqSynthesisControl::manualIfEnabled), 3U);
    EXPECT_EQ(slot(&IYqSynthesisControl::setSelectedIf), 4U);
    EXPECT_EQ(slot(&IYqSynthesisControl::selectedIf), 5U);
    EXPECT_EQ(slot(&IYqSynthesisControl::supportedIfs), 6U);
}

} // namespace tov::testing

#endif

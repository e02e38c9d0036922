#include "devices/icontrollifecycleobserver.h"
#include "sdk/ivna.h"
#include "sdk/service/ifilememorycontrol.h"
#include "sdk/service/iloleakagecontrol.h"
#include "sdk/service/imemoryoperationscontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "sdk/service/imemoryusbidcontrol.h"
#include "sdk/service/ipotentiometerscontrol.h"
#include "sdk/service/isystemtermscontrol.h"
#include "sdk/service/iyqsynthesiscontrol.h"
#include "service/memory/ifilememorycontrol.h"
#include "service/memory/imemoryoperationscontrol.h"
#include "service/memory/ipotentiometerscontrol.h"
#include "service/memory/iserialnumbercontrol.h"
#include "service/memory/isystemtermscontrol.h"
#include "service/memory/iusbidcontrol.h"

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

TEST(SlotOrder, OfTheFileMemoryControl)
{
    using Control = sdk::service::IFileMemoryControl;
    EXPECT_EQ(slot(&Control::isAvailable), 1U);
    EXPECT_EQ(slot(&Control::fileList), 2U);
    EXPECT_EQ(slot(&Control::spaceInfo), 3U);
    EXPECT_EQ(slot(&Control::readFile), 4U);
    EXPECT_EQ(slot(&Control::writeFile), 5U);
    EXPECT_EQ(slot(&Control::deleteFile), 6U);
}

TEST(SlotOrder, OfTheMemoryOperationsControl)
{
    using Control = sdk::service::IMemoryOperationsControl;
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::read), 2U);
    EXPECT_EQ(slot(&Control::write), 3U);
    EXPECT_EQ(slot(&Control::erase), 4U);
    EXPECT_EQ(slot(&Control::integrityCheck), 5U);
    EXPECT_EQ(slot(&Control::addObserver), 6U);
    EXPECT_EQ(slot(&Control::removeObserver), 7U);
}

TEST(SlotOrder, OfTheMemoryOperationsObserver)
{
    using Observer = sdk::service::IMemoryOperationsControl::IObserver;
    EXPECT_EQ(slot(&Observer::onNotification1), 1U);
    EXPECT_EQ(slot(&Observer::onNotification2), 2U);
    EXPECT_EQ(slot(&Observer::onNotification3), 3U);
    EXPECT_EQ(slot(&Observer::onNotification4), 4U);
}

TEST(SlotOrder, OfThePotentiometersControl)
{
    using Control = sdk::service::IPotentiometersControl;
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::potentiometers), 2U);
    EXPECT_EQ(slot(&Control::readFromEeprom), 3U);
    EXPECT_EQ(slot(&Control::writeToRam), 4U);
    EXPECT_EQ(slot(&Control::writeToEeprom), 5U);
}

TEST(SlotOrder, OfTheSerialNumberControl)
{
    using Control = sdk::service::IMemorySerialNumberControl;
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::readSerialNumber), 2U);
    EXPECT_EQ(slot(&Control::writeSerialNumber), 3U);
    EXPECT_EQ(slot(&Control::addObserver), 4U);
    EXPECT_EQ(slot(&Control::removeObserver), 5U);
}

TEST(SlotOrder, OfTheSerialNumberObserver)
{
    using Observer = sdk::service::IMemorySerialNumberControl::Observer;
    EXPECT_EQ(slot(&Observer::onSerialNumberEvent), 1U);
}

TEST(SlotOrder, OfTheUsbIdControl)
{
    using Control = sdk::service::IMemoryUsbIdControl;
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::usbId), 2U);
    EXPECT_EQ(slot(&Control::usbIds), 3U);
    EXPECT_EQ(slot(&Control::writeUsbId), 4U);
}

TEST(SlotOrder, OfTheSystemTermsControl)
{
    using Control = sdk::service::ISystemTermsControl;
    using Terms = sdk::corrections::ErrorTerms;
    using WithRecords = void (Control::*)(long long, double, std::vector<Control::TermsRecord>, Terms);
    using WithoutRecords = void (Control::*)(long long, double, Terms);
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::addObserver), 2U);
    EXPECT_EQ(slot(&Control::removeObserver), 3U);
    EXPECT_EQ(slot(&Control::termsRecords), 4U);
    EXPECT_EQ(slot(static_cast<WithRecords>(&Control::writeSystemTerms)), 7U);
    EXPECT_EQ(slot(static_cast<WithoutRecords>(&Control::writeSystemTerms)), 8U);
    EXPECT_EQ(slot(&Control::systemTermsFlag), 9U);
}

TEST(SlotOrder, OfTheSystemTermsObserver)
{
    using Observer = sdk::service::ISystemTermsControl::Observer;
    EXPECT_EQ(slot(&Observer::onTermsNotice), 1U);
    EXPECT_EQ(slot(&Observer::onTermsValue), 2U);
    EXPECT_EQ(slot(&Observer::onTermsSecondNotice), 3U);
    EXPECT_EQ(slot(&Observer::onTermsStatus), 4U);
}

TEST(SlotOrder, OfTheApplicationsFileMemory)
{
    using Control = devices::service::IFileMemoryControl;
    EXPECT_EQ(slot(&Control::fileList), 1U);
    EXPECT_EQ(slot(&Control::spaceInfo), 2U);
    EXPECT_EQ(slot(&Control::readFile), 3U);
    EXPECT_EQ(slot(&Control::writeFile), 4U);
    EXPECT_EQ(slot(&Control::deleteFile), 5U);
}

TEST(SlotOrder, OfTheApplicationsMemoryOperations)
{
    using Control = devices::service::IMemoryOperationsControl;
    EXPECT_EQ(slot(&Control::read), 1U);
    EXPECT_EQ(slot(&Control::write), 2U);
    EXPECT_EQ(slot(&Control::erase), 3U);
    EXPECT_EQ(slot(&Control::integrityCheck), 4U);
    EXPECT_EQ(slot(&Control::addObserver), 5U);
    EXPECT_EQ(slot(&Control::removeObserver), 6U);
}

TEST(SlotOrder, OfTheApplicationsMemoryOperationsObserver)
{
    using Observer = devices::service::IMemoryOperationsControl::IObserver;
    EXPECT_EQ(slot(&Observer::onNotification1), 1U);
    EXPECT_EQ(slot(&Observer::onNotification2), 2U);
    EXPECT_EQ(slot(&Observer::onNotification3), 3U);
    EXPECT_EQ(slot(&Observer::onNotification4), 4U);
}

TEST(SlotOrder, OfTheApplicationsPotentiometers)
{
    using Control = devices::service::IPotentiometersControl;
    EXPECT_EQ(slot(&Control::potentiometers), 1U);
    EXPECT_EQ(slot(&Control::readFromEeprom), 2U);
    EXPECT_EQ(slot(&Control::writeToRam), 3U);
    EXPECT_EQ(slot(&Control::writeToEeprom), 4U);
}

TEST(SlotOrder, OfTheApplicationsSerialNumber)
{
    using Control = devices::service::ISerialNumberControl;
    EXPECT_EQ(slot(&Control::serialNumber), 1U);
    EXPECT_EQ(slot(&Control::writeSerialNumber), 2U);
    EXPECT_EQ(slot(&Control::addObserver), 3U);
    EXPECT_EQ(slot(&Control::removeObserver), 4U);
}

TEST(SlotOrder, OfTheApplicationsSerialNumberObserver)
{
    using Observer = devices::service::ISerialNumberControl::Observer;
    EXPECT_EQ(slot(&Observer::onSerialNumberEvent), 1U);
}

TEST(SlotOrder, OfTheApplicationsUsbId)
{
    using Control = devices::service::IUsbIdControl;
    EXPECT_EQ(slot(&Control::usbId), 1U);
    EXPECT_EQ(slot(&Control::usbIds), 2U);
    EXPECT_EQ(slot(&Control::writeUsbId), 3U);
}

TEST(SlotOrder, OfTheApplicationsSystemTerms)
{
    using Control = devices::service::ISystemTermsControl;
    using WithRecords = void (Control::*)(QDateTime, double, std::vector<Control::TermsRecord>, const vna::ErrorTerms&);
    using WithoutRecords = void (Control::*)(QDateTime, double, const vna::ErrorTerms&);
    EXPECT_EQ(slot(&Control::termsRecords), 1U);
    EXPECT_EQ(slot(static_cast<WithRecords>(&Control::writeSystemTerms)), 2U);
    EXPECT_EQ(slot(static_cast<WithoutRecords>(&Control::writeSystemTerms)), 3U);
    EXPECT_EQ(slot(&Control::systemTermsFlag), 4U);
    EXPECT_EQ(slot(&Control::addObserver), 5U);
    EXPECT_EQ(slot(&Control::removeObserver), 6U);
}

TEST(SlotOrder, OfTheApplicationsSystemTermsObserver)
{
    using Observer = devices::service::ISystemTermsControl::Observer;
    EXPECT_EQ(slot(&Observer::onTermsNotice), 1U);
    EXPECT_EQ(slot(&Observer::onTermsValue), 2U);
    EXPECT_EQ(slot(&Observer::onTermsSecondNotice), 3U);
    EXPECT_EQ(slot(&Observer::onTermsStatus), 4U);
}

} // namespace tov::testing

#endif

#include "devices/icontrollifecycleobserver.h"
#include "sdk/ifactorycorrectioncontrol.h"
#include "sdk/itemperaturecontrol.h"
#include "sdk/ivna.h"
#include "sdk/service/calibrations/icalibrationcontroller.h"
#include "sdk/service/ifilememorycontrol.h"
#include "sdk/service/ikz515powercontrol.h"
#include "sdk/service/ikz515synthesiscontrol.h"
#include "sdk/service/iloleakagecontrol.h"
#include "sdk/service/imemoryoperationscontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "sdk/service/imemoryusbidcontrol.h"
#include "sdk/service/ipotentiometerscontrol.h"
#include "sdk/service/isystemtermscontrol.h"
#include "sdk/service/iulkpowercontrol.h"
#include "sdk/service/iulksynthesiscontrol.h"
#include "sdk/service/iwn0807powermodulecontrol.h"
#include "sdk/service/iwn0807synthesiscontrol.h"
#include "sdk/service/iyqfactorypowercalibrationcontrol.h"
#include "sdk/service/iyqifswcalibrationcontrol.h"
#include "sdk/service/iyqsynthesiscontrol.h"
#include "service/calibration/sdkfactorycorrectioncontrol.h"
#include "service/calibration/sdkyqfactorypowercalibrationcontrol.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"
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

namespace {

template <typename Control>
void expectSlotsOfACalibration()
{
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::addObserver), 2U);
    EXPECT_EQ(slot(&Control::removeObserver), 3U);
    EXPECT_EQ(slot(&Control::frequencyPlan), 4U);
    EXPECT_EQ(slot(&Control::saveCalibrationData), 5U);
}

template <typename Observer>
void expectSlotsOfACalibrationObserver()
{
    EXPECT_EQ(slot(&Observer::onFirstEvent), 1U);
    EXPECT_EQ(slot(&Observer::onSecondEvent), 2U);
    EXPECT_EQ(slot(&Observer::onThirdEvent), 3U);
    EXPECT_EQ(slot(&Observer::onStateChanged), 4U);
}

template <typename Observer>
void expectSlotsOfACorrectionObserver()
{
    EXPECT_EQ(slot(&Observer::onCorrectionsChanged), 1U);
    EXPECT_EQ(slot(&Observer::onCorrectionStatesChanged), 2U);
    EXPECT_EQ(slot(&Observer::onEnabledChanged), 3U);
}

} // namespace

TEST(SlotOrder, OfTheIfswCalibration)
{
    expectSlotsOfACalibration<sdk::service::IYqIfswCalibrationControl>();
    expectSlotsOfACalibrationObserver<sdk::service::IYqIfswCalibrationControl::Observer>();
    expectSlotsOfACalibrationObserver<devices::service::SdkYqIfswCalibrationControl::Observer>();
}

TEST(SlotOrder, OfTheFactoryPowerCalibration)
{
    expectSlotsOfACalibration<sdk::service::IYqFactoryPowerCalibrationControl>();
    expectSlotsOfACalibrationObserver<sdk::service::IYqFactoryPowerCalibrationControl::Observer>();
    expectSlotsOfACalibrationObserver<devices::service::SdkYqFactoryPowerCalibrationControl::Observer>();
}

TEST(SlotOrder, OfTheFactoryCorrections)
{
    using Control = sdk::IFactoryCorrectionControl;
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::supportedCorrections), 2U);
    EXPECT_EQ(slot(&Control::validCorrections), 3U);
    EXPECT_EQ(slot(&Control::enabledCorrections), 4U);
    EXPECT_EQ(slot(&Control::modifiableCorrections), 5U);
    EXPECT_EQ(slot(&Control::setEnabled), 6U);
    EXPECT_EQ(slot(&Control::addObserver), 7U);
    EXPECT_EQ(slot(&Control::removeObserver), 8U);
    expectSlotsOfACorrectionObserver<Control::IObserver>();
    expectSlotsOfACorrectionObserver<devices::service::SdkFactoryCorrectionControl::Observer>();
}

TEST(SlotOrder, OfTheCalibrationController)
{
    using Control = sdk::service::calibrations::ICalibrationController;
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::addObserver), 2U);
    EXPECT_EQ(slot(&Control::removeObserver), 3U);
    EXPECT_EQ(slot(&Control::Observer::onUnitStatusChanged), 1U);
    EXPECT_EQ(slot(&Control::Observer::onSaveProgress), 2U);
    EXPECT_EQ(slot(&Control::Observer::onConfigurationChanged), 3U);
}

TEST(SlotOrder, OfTheUlkSynthesisControl)
{
    using Control = sdk::service::IUlkSynthesisControl;
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::setLoLeakageMode), 2U);
    EXPECT_EQ(slot(&Control::loLeakageMode), 3U);
    EXPECT_EQ(slot(&Control::enableManualIf), 4U);
    EXPECT_EQ(slot(&Control::manualIfEnabled), 5U);
    EXPECT_EQ(slot(&Control::setSelectedIf), 6U);
    EXPECT_EQ(slot(&Control::selectedIf), 7U);
    EXPECT_EQ(slot(&Control::supportedIfs), 8U);
    EXPECT_EQ(slot(&Control::setFilter1Frequency), 9U);
    EXPECT_EQ(slot(&Control::filter1Frequency), 10U);
    EXPECT_EQ(slot(&Control::enableManualRef), 11U);
    EXPECT_EQ(slot(&Control::manualRefEnabled), 12U);
    EXPECT_EQ(slot(&Control::setSelectedRef), 13U);
    EXPECT_EQ(slot(&Control::selectedRef), 14U);
    EXPECT_EQ(slot(&Control::supportedRefs), 15U);
    EXPECT_EQ(slot(&Control::reset), 16U);
}

TEST(SlotOrder, OfTheKz515PowerControl)
{
    using Control = sdk::service::IKZ515PowerControl;
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::maxPowerValue), 2U);
    EXPECT_EQ(slot(&Control::powerControlMode), 3U);
    EXPECT_EQ(slot(&Control::setPowerControlMode), 4U);
    EXPECT_EQ(slot(&Control::loPower), 5U);
    EXPECT_EQ(slot(&Control::setLoPower), 6U);
    EXPECT_EQ(slot(&Control::rfPower), 7U);
    EXPECT_EQ(slot(&Control::setRfPower), 8U);
    EXPECT_EQ(slot(&Control::maxDacValue), 9U);
    EXPECT_EQ(slot(&Control::dacControlMode), 10U);
    EXPECT_EQ(slot(&Control::setDacControlMode), 11U);
    EXPECT_EQ(slot(&Control::dacMode), 12U);
    EXPECT_EQ(slot(&Control::setDacMode), 13U);
    EXPECT_EQ(slot(&Control::unionDac), 14U);
    EXPECT_EQ(slot(&Control::setUnionDac), 15U);
    EXPECT_EQ(slot(&Control::dacA), 16U);
    EXPECT_EQ(slot(&Control::setDacA), 17U);
    EXPECT_EQ(slot(&Control::dacB), 18U);
    EXPECT_EQ(slot(&Control::setDacB), 19U);
    EXPECT_EQ(slot(&Control::availableGains), 20U);
    EXPECT_EQ(slot(&Control::referenceGain), 21U);
    EXPECT_EQ(slot(&Control::setReferenceGain), 22U);
    EXPECT_EQ(slot(&Control::signalGain), 23U);
    EXPECT_EQ(slot(&Control::setSignalGain), 24U);
    EXPECT_EQ(slot(&Control::assignReceiverCorrectionTable), 25U);
    EXPECT_EQ(slot(&Control::assignPowerCalibrationTable), 26U);
}

TEST(SlotOrder, OfTheKz515SynthesisControl)
{
    using Control = sdk::service::IKZ515SynthesisControl;
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::availableReferenceFrequencies), 2U);
    EXPECT_EQ(slot(&Control::currentReferenceFrequency), 3U);
    EXPECT_EQ(slot(&Control::setReferenceFrequency), 4U);
}

TEST(SlotOrder, OfTheWn0807PowerControl)
{
    using Control = sdk::service::IWn0807PowerModuleControl;
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::setDacMode), 2U);
    EXPECT_EQ(slot(&Control::dacMode), 3U);
    EXPECT_EQ(slot(&Control::setPowerMode), 4U);
    EXPECT_EQ(slot(&Control::powerMode), 5U);
    EXPECT_EQ(slot(&Control::setStepAttenuatorMode), 6U);
    EXPECT_EQ(slot(&Control::stepAttenuatorMode), 7U);
    EXPECT_EQ(slot(&Control::setDiscreteAttenuatorMode), 8U);
    EXPECT_EQ(slot(&Control::discreteAttenuatorMode), 9U);
    EXPECT_EQ(slot(&Control::setPowerConstant), 10U);
    EXPECT_EQ(slot(&Control::powerConstant), 11U);
    EXPECT_EQ(slot(&Control::setRfDac), 12U);
    EXPECT_EQ(slot(&Control::rfDac), 13U);
    EXPECT_EQ(slot(&Control::setSplitDac), 14U);
    EXPECT_EQ(slot(&Control::splitDac), 15U);
    EXPECT_EQ(slot(&Control::setSplitDds), 16U);
    EXPECT_EQ(slot(&Control::splitDds), 17U);
    EXPECT_EQ(slot(&Control::setAttenuationDb), 18U);
    EXPECT_EQ(slot(&Control::attenuationDb), 19U);
    EXPECT_EQ(slot(&Control::setAttenuationStep), 20U);
    EXPECT_EQ(slot(&Control::attenuationStep), 21U);
    EXPECT_EQ(slot(&Control::enableDiscreteAttenuator), 22U);
    EXPECT_EQ(slot(&Control::discreteAttenuatorEnabled), 23U);
    EXPECT_EQ(slot(&Control::setSquarePatternStep), 24U);
    EXPECT_EQ(slot(&Control::squarePatternStep), 25U);
    EXPECT_EQ(slot(&Control::setDdsCorrectionMode), 26U);
    EXPECT_EQ(slot(&Control::ddsCorrectionMode), 27U);
    EXPECT_EQ(slot(&Control::enableDdsCorrection), 28U);
    EXPECT_EQ(slot(&Control::ddsCorrectionEnabled), 29U);
    EXPECT_EQ(slot(&Control::assignPowerCalibrationTable), 30U);
}

TEST(SlotOrder, OfTheWn0807SynthesisControl)
{
    using Control = sdk::service::IWn0807SynthesisControl;
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::loPower), 2U);
    EXPECT_EQ(slot(&Control::rfPower), 3U);
    EXPECT_EQ(slot(&Control::setLoPower), 4U);
    EXPECT_EQ(slot(&Control::setRfPower), 5U);
    EXPECT_EQ(slot(&Control::rfPowerMode), 6U);
    EXPECT_EQ(slot(&Control::setRfPowerMode), 7U);
    EXPECT_EQ(slot(&Control::rfPowerRangeTable), 8U);
    EXPECT_EQ(slot(&Control::rfPowerDefaultRangeTable), 9U);
    EXPECT_EQ(slot(&Control::setRfPowerRangeFrequency), 10U);
    EXPECT_EQ(slot(&Control::setRfPowerRangePower), 11U);
    EXPECT_EQ(slot(&Control::ifMode), 12U);
    EXPECT_EQ(slot(&Control::setIfMode), 13U);
    EXPECT_EQ(slot(&Control::setSelectedIf), 14U);
    EXPECT_EQ(slot(&Control::selectedIf), 15U);
    EXPECT_EQ(slot(&Control::supportedIfs), 16U);
    EXPECT_EQ(slot(&Control::reserved17), 17U);
    EXPECT_EQ(slot(&Control::reserved18), 18U);
    EXPECT_EQ(slot(&Control::setCapacitanceMode), 19U);
    EXPECT_EQ(slot(&Control::setCapacitanceRange), 20U);
    EXPECT_EQ(slot(&Control::capacitanceMode), 21U);
    EXPECT_EQ(slot(&Control::capacitanceRange), 22U);
    EXPECT_EQ(slot(&Control::setRfFilterMode), 23U);
    EXPECT_EQ(slot(&Control::setRfFilterFrom), 24U);
    EXPECT_EQ(slot(&Control::setSelectedRfFilter), 25U);
    EXPECT_EQ(slot(&Control::rfFilterMode), 26U);
    EXPECT_EQ(slot(&Control::selectedRfFilter), 27U);
    EXPECT_EQ(slot(&Control::rfFilterFrom), 28U);
    EXPECT_EQ(slot(&Control::setDdsSwitchFreq), 29U);
    EXPECT_EQ(slot(&Control::ddsSwitchFreq), 30U);
    EXPECT_EQ(slot(&Control::delayMode), 31U);
    EXPECT_EQ(slot(&Control::setDelayMode), 32U);
    EXPECT_EQ(slot(&Control::measureDelay), 33U);
    EXPECT_EQ(slot(&Control::setMeasureDelay), 34U);
}

TEST(SlotOrder, OfTheUlkPowerControl)
{
    using Control = sdk::service::IUlkPowerControl;
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::loPower), 2U);
    EXPECT_EQ(slot(&Control::rfPower), 3U);
    EXPECT_EQ(slot(&Control::setLoPower), 4U);
    EXPECT_EQ(slot(&Control::setRfPower), 5U);
    EXPECT_EQ(slot(&Control::minPowerCode), 6U);
    EXPECT_EQ(slot(&Control::maxPowerCode), 7U);
    EXPECT_EQ(slot(&Control::setSyntPowerMode), 8U);
    EXPECT_EQ(slot(&Control::syntPowerMode), 9U);
    EXPECT_EQ(slot(&Control::setAttenuationMode), 10U);
    EXPECT_EQ(slot(&Control::attenuationMode), 11U);
    EXPECT_EQ(slot(&Control::setAttenuationStep), 12U);
    EXPECT_EQ(slot(&Control::attenuationStep), 13U);
    EXPECT_EQ(slot(&Control::setStepAttenuatorMode), 14U);
    EXPECT_EQ(slot(&Control::stepAttenuatorMode), 15U);
    EXPECT_EQ(slot(&Control::defaultAttenuationStep), 16U);
    EXPECT_EQ(slot(&Control::enableDiscreteAttenuator), 17U);
    EXPECT_EQ(slot(&Control::discreteAttenuatorEnabled), 18U);
    EXPECT_EQ(slot(&Control::setDiscreteAttenuatorMode), 19U);
    EXPECT_EQ(slot(&Control::discreteAttenuatorMode), 20U);
    EXPECT_EQ(slot(&Control::setCommonAttenuationMode), 21U);
    EXPECT_EQ(slot(&Control::commonAttenuationMode), 22U);
    EXPECT_EQ(slot(&Control::setCommonAttenuationStep), 23U);
    EXPECT_EQ(slot(&Control::commonAttenuationStep), 24U);
    EXPECT_EQ(slot(&Control::setAmpTPort2), 25U);
    EXPECT_EQ(slot(&Control::ampTPort2), 26U);
    EXPECT_EQ(slot(&Control::setAmpRPort1), 27U);
    EXPECT_EQ(slot(&Control::ampRPort1), 28U);
    EXPECT_EQ(slot(&Control::setAmpTPort1), 29U);
    EXPECT_EQ(slot(&Control::ampTPort1), 30U);
    EXPECT_EQ(slot(&Control::setRfPowerCodes), 31U);
    EXPECT_EQ(slot(&Control::setLoPowerCodes), 32U);
    EXPECT_EQ(slot(&Control::reset), 33U);
}

TEST(SlotOrder, OfTheTemperatureControl)
{
    using Control = sdk::ITemperatureControl;
    EXPECT_EQ(slot(&Control::reserved1), 1U);
    EXPECT_EQ(slot(&Control::temperature), 2U);
    EXPECT_EQ(slot(&Control::modulesTemperature), 3U);
    EXPECT_EQ(slot(&Control::addObserver), 4U);
    EXPECT_EQ(slot(&Control::removeObserver), 5U);
    EXPECT_EQ(slot(&Control::Observer::onTemperatureChanged), 1U);
}

} // namespace tov::testing

#endif

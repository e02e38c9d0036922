// The records that go through the library.

#include "service/calibration/sdkyqfactorypowercalibrationcontrol.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"
#include "service/memory/ifilememorycontrol.h"
#include "service/memory/imemoryoperationscontrol.h"
#include "service/memory/ipotentiometerscontrol.h"
#include "service/memory/iserialnumbercontrol.h"
#include "service/memory/isystemtermscontrol.h"
#include "service/memory/iusbidcontrol.h"
#include "service/monitoring/sdktemperaturecontrol.h"
#include "service/tuning/sdkwn0807synthesiscontrol.h"

#include <gtest/gtest.h>

namespace tov::testing {

namespace {

using namespace devices::service;

template <typename... Numbers>
bool areZero(Numbers... numbers)
{
    return ((numbers == Numbers{}) && ...);
}

} // namespace

TEST(Records, OfTheMemoryHaveZerosUntilTheyAreFilled)
{
    const IFileMemoryControl::FileInfo file;
    EXPECT_TRUE(areZero(file.word1, file.word2));
    const IFileMemoryControl::SpaceInfo space;
    EXPECT_TRUE(areZero(space.value1, space.value2, space.value3));
    const MemoryOperationEvent operation;
    EXPECT_TRUE(areZero(operation.first, operation.second));
    const PotentiometerInfo potentiometer;
    EXPECT_TRUE(areZero(potentiometer.word1, potentiometer.word2));
    const SerialNumberEvent event;
    EXPECT_TRUE(areZero(event.first, event.second));
    const ISystemTermsControl::TermsRecord terms;
    EXPECT_TRUE(areZero(terms.key, terms.value, terms.number));
    const IUsbIdControl::UsbId id;
    EXPECT_TRUE(areZero(id.id1, id.id2, id.id3, id.data1, id.data2));
    EXPECT_EQ(id.tag, 1) << "but for this one";
}

TEST(Records, OfTheCalibrationsHaveZerosUntilTheyAreFilled)
{
    const SdkYqIfswCalibrationControl::FrequencyPlan::Segment segment;
    EXPECT_TRUE(areZero(segment.start, segment.stop, segment.points));
    const SdkYqIfswCalibrationControl::IfswCalibrationRecord record;
    EXPECT_TRUE(areZero(record.value1, record.value2, record.value3));
    const SdkYqFactoryPowerCalibrationControl::FrequencyPlan::Segment powerSegment;
    EXPECT_TRUE(areZero(powerSegment.start, powerSegment.stop, powerSegment.points));
    const SdkYqFactoryPowerCalibrationControl::PowerCalPoint point;
    EXPECT_TRUE(areZero(point.value1, point.value2, point.value3, point.value4, point.value5, point.value6,
                        point.value7, point.value8, point.value9));
}

TEST(Records, OfTheModulesHaveZerosUntilTheyAreFilled)
{
    const SdkTemperatureControl::ModuleTemperature module;
    EXPECT_TRUE(areZero(module.temperature));
    const SdkWn0807SynthesisControl::PowerSyntEntry entry;
    EXPECT_TRUE(areZero(entry.frequency, entry.power));
}

} // namespace tov::testing

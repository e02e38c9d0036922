#include "service/calibration/calibrations.h"

#include <gmock/gmock.h>

#include <chrono>
#include <limits>
#include <memory>
#include <stdexcept>

namespace tov::testing {

namespace {

using devices::service::SdkYqFactoryPowerCalibrationControl;
using std::chrono::seconds;
using std::chrono::sys_seconds;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class SdkYqFactoryPowerCalibration : public ::testing::Test
{
protected:
    std::shared_ptr<FakeYqFactoryPowerCalibrationControl> fake =
        std::make_shared<FakeYqFactoryPowerCalibrationControl>();
    SdkYqFactoryPowerCalibrationControl calibration{
        devices::ReacquiringControl<sdk::service::IYqFactoryPowerCalibrationControl>(
            [this] { return sdk::ControlHandle<sdk::service::IYqFactoryPowerCalibrationControl>(fake); })};
};

} // namespace

TEST_F(SdkYqFactoryPowerCalibration, SavesThePointsWithTheSameSeconds)
{
    calibration.saveCalibrationData(sys_seconds(seconds(1'700'000'000)), -2.5,
                                    {{1e9, 2.0F, 3.0F, 4, 255, 6.0F, 7, 8.0F, 9.0F}, {}});

    EXPECT_THAT(fake->calls(), ElementsAre("saveCalibrationData(1700000000, -2.5)"));
    ASSERT_THAT(fake->saved, SizeIs(2));
    EXPECT_EQ(fake->saved.capacity(), 2U);
    const auto& point = fake->saved.front();
    EXPECT_EQ(point.value1, 1e9);
    EXPECT_EQ(point.value2, 2.0F);
    EXPECT_EQ(point.value3, 3.0F);
    EXPECT_EQ(point.value4, 4);
    EXPECT_EQ(point.value5, 255);
    EXPECT_EQ(point.value6, 6.0F);
    EXPECT_EQ(point.value7, 7);
    EXPECT_EQ(point.value8, 8.0F);
    EXPECT_EQ(point.value9, 9.0F);
}

TEST_F(SdkYqFactoryPowerCalibration, ChecksNothing)
{
    calibration.saveCalibrationData(sys_seconds(), std::numeric_limits<double>::quiet_NaN(), {});
    calibration.saveCalibrationData(sys_seconds(seconds(-1)), -0.0, {});
    EXPECT_THAT(fake->calls(), ElementsAre("saveCalibrationData(0, nan)", "saveCalibrationData(-1, -0)"));
}

TEST_F(SdkYqFactoryPowerCalibration, DropsThePointsWhenTheControlIsAbsent)
{
    const auto journal = std::make_shared<Journal>();
    fake->recordInto(journal);
    fake.reset();
    calibration.saveCalibrationData(sys_seconds(), 1.0, {{}});
    EXPECT_THAT(journal->calls(), IsEmpty());
}

TEST_F(SdkYqFactoryPowerCalibration, PassesOnWhatTheSdkThrowsAndLetsGoOfTheControl)
{
    fake->duringCall = [] { throw std::runtime_error("the instrument failed"); };
    EXPECT_THROW(calibration.saveCalibrationData(sys_seconds(), 1.0, {{}}), std::runtime_error);
    EXPECT_EQ(fake.use_count(), 1);
}

} // namespace tov::testing

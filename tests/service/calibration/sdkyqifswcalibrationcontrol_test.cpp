#include "service/calibration/calibrations.h"

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>

namespace tov::testing {

namespace {

using devices::service::SdkYqIfswCalibrationControl;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Record = SdkYqIfswCalibrationControl::IfswCalibrationRecord;

SdkYqIfswCalibrationControl::IfswCalibrationData numbered()
{
    SdkYqIfswCalibrationControl::IfswCalibrationData data;
    data.values = {1.0, -0.0, 3.0};
    double number = 10.0;
    for (auto& group : data.groups)
        for (auto* const records : {&group.first, &group.second})
            for (int i = 0; i < 2; ++i, number += 10.0)
                records->push_back({number, number + 1.0, number + 2.0});
    return data;
}

class SdkYqIfswCalibration : public ::testing::Test
{
protected:
    std::shared_ptr<FakeYqIfswCalibrationControl> fake = std::make_shared<FakeYqIfswCalibrationControl>();
    SdkYqIfswCalibrationControl calibration{devices::ReacquiringControl<sdk::service::IYqIfswCalibrationControl>(
        [this] { return sdk::ControlHandle<sdk::service::IYqIfswCalibrationControl>(fake); })};
};

} // namespace

TEST_F(SdkYqIfswCalibration, SavesEveryRecordInItsPlace)
{
    calibration.saveCalibrationData(numbered());

    EXPECT_THAT(fake->calls(), ElementsAre("saveCalibrationData()"));
    EXPECT_THAT(fake->saved.values, ElementsAre(1.0, -0.0, 3.0));
    double number = 10.0;
    for (const auto& group : fake->saved.groups)
        for (const auto* const records : {&group.first, &group.second}) {
            ASSERT_EQ(records->size(), 2U);
            EXPECT_EQ(records->capacity(), 2U);
            for (const auto& record : *records) {
                EXPECT_EQ(record.value1, number);
                EXPECT_EQ(record.value2, number + 1.0);
                EXPECT_EQ(record.value3, number + 2.0);
                number += 10.0;
            }
        }
}

TEST_F(SdkYqIfswCalibration, MovesTheValuesThrough)
{
    auto data = numbered();
    const double* const values = data.values.data();
    calibration.saveCalibrationData(std::move(data));
    EXPECT_EQ(fake->saved.values.data(), values);
}

TEST_F(SdkYqIfswCalibration, SavesEmptyData)
{
    calibration.saveCalibrationData({});
    EXPECT_THAT(fake->calls(), ElementsAre("saveCalibrationData()"));
    EXPECT_THAT(fake->saved.values, IsEmpty());
}

TEST_F(SdkYqIfswCalibration, DropsTheDataWhenTheControlIsAbsent)
{
    const auto journal = std::make_shared<Journal>();
    fake->recordInto(journal);
    fake.reset();
    calibration.saveCalibrationData(numbered());
    EXPECT_THAT(journal->calls(), IsEmpty());
}

TEST_F(SdkYqIfswCalibration, PassesOnWhatTheSdkThrowsAndLetsGoOfTheControl)
{
    fake->duringCall = [] { throw std::runtime_error("the instrument failed"); };
    EXPECT_THROW(calibration.saveCalibrationData(numbered()), std::runtime_error);
    EXPECT_THROW(calibration.frequencyPlan(), std::runtime_error);
    EXPECT_EQ(fake.use_count(), 1);
}

} // namespace tov::testing

#include "service/calibration/frequencyplanconversion.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <limits>

namespace tov::testing {

namespace {

using devices::service::fromSdkFrequencyPlan;
using devices::service::toSdkFrequencyPlan;
using ::testing::IsEmpty;
using ::testing::SizeIs;

} // namespace

TEST(FrequencyPlans, OfNoSegmentsStayEmpty)
{
    EXPECT_THAT(fromSdkFrequencyPlan({}), IsEmpty());
    EXPECT_EQ(fromSdkFrequencyPlan({}).capacity(), 0U);
    EXPECT_THAT(toSdkFrequencyPlan({}).segments, IsEmpty());
    EXPECT_EQ(toSdkFrequencyPlan({}).segments.capacity(), 0U);
}

TEST(FrequencyPlans, WidenMinusOneToMinusOne)
{
    const auto converted = fromSdkFrequencyPlan({{{1.0, 2.0, -1}}});
    ASSERT_THAT(converted, SizeIs(1));
    EXPECT_EQ(converted.front().points, -1);
}

TEST(FrequencyPlans, WrapPointsThatDoNotFit)
{
    const auto plan = toSdkFrequencyPlan(
        {{0.0, 0.0, 4'294'967'297}, {0.0, 0.0, 4'294'967'296}, {0.0, 0.0, 2'147'483'648}, {0.0, 0.0, -4'294'967'297}});
    ASSERT_THAT(plan.segments, SizeIs(4));
    EXPECT_EQ(plan.segments[0].points, 1);
    EXPECT_EQ(plan.segments[1].points, 0);
    EXPECT_EQ(plan.segments[2].points, std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(plan.segments[3].points, -1);
}

} // namespace tov::testing

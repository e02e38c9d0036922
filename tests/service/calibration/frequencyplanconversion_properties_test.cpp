#include "service/calibration/frequencyplanconversion.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <vector>

namespace tov::testing {

namespace {

using devices::service::fromSdkFrequencyPlan;
using devices::service::toSdkFrequencyPlan;
using sdk::FrequencyPlan;
using vna::FrequencySegment;

// Any 64 bits, not only numbers, and often the remarkable ones.
rc::Gen<double> anyBits()
{
    const auto remarkable = rc::gen::element<std::uint64_t>(0x0000000000000000, 0x8000000000000000, 0x7FF0000000000000,
                                                            0xFFF0000000000000, 0x7FF8000000000000, 0x7FF0000000000001,
                                                            0xFFFFFFFFFFFFFFFF, 0x7FF8DEADBEEF0001, 0x0000000000000001);
    return rc::gen::map(rc::gen::oneOf(rc::gen::arbitrary<std::uint64_t>(), remarkable),
                        [](std::uint64_t bits) { return std::bit_cast<double>(bits); });
}

rc::Gen<std::vector<FrequencyPlan::Segment>> sdkSegments()
{
    const auto points = rc::gen::oneOf(
        rc::gen::arbitrary<std::int32_t>(),
        rc::gen::element(-1, 0, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
    return rc::gen::container<std::vector<FrequencyPlan::Segment>>(
        rc::gen::construct<FrequencyPlan::Segment>(anyBits(), anyBits(), points));
}

rc::Gen<std::vector<FrequencySegment>> segments()
{
    const auto points = rc::gen::oneOf(rc::gen::arbitrary<std::int64_t>(),
                                       rc::gen::element<std::int64_t>(-1, 2'147'483'648, 4'294'967'296, 4'294'967'297,
                                                                      std::numeric_limits<std::int64_t>::min(),
                                                                      std::numeric_limits<std::int64_t>::max()));
    return rc::gen::container<std::vector<FrequencySegment>>(
        rc::gen::construct<FrequencySegment>(anyBits(), anyBits(), points));
}

template <typename Left, typename Right>
bool sameBounds(const Left& left, const Right& right)
{
    return std::bit_cast<std::uint64_t>(left.start) == std::bit_cast<std::uint64_t>(right.start)
           && std::bit_cast<std::uint64_t>(left.stop) == std::bit_cast<std::uint64_t>(right.stop);
}

} // namespace

RC_GTEST_PROP(FrequencyPlanProperties, ComeBackFromTheApplicationUnchanged, ())
{
    const FrequencyPlan plan{*sdkSegments()};
    const FrequencyPlan back = toSdkFrequencyPlan(fromSdkFrequencyPlan(plan));
    RC_ASSERT(back.segments.size() == plan.segments.size());
    for (std::size_t i = 0; i < plan.segments.size(); ++i) {
        RC_ASSERT(sameBounds(back.segments[i], plan.segments[i]));
        RC_ASSERT(back.segments[i].points == plan.segments[i].points);
    }
}

RC_GTEST_PROP(FrequencyPlanProperties, ComeToTheApplicationInOrderWithTheSignOfTheirPoints, ())
{
    const FrequencyPlan plan{*sdkSegments()};
    const auto converted = fromSdkFrequencyPlan(plan);
    RC_ASSERT(converted.size() == plan.segments.size());
    RC_ASSERT(converted.capacity() == plan.segments.size());
    for (std::size_t i = 0; i < plan.segments.size(); ++i) {
        RC_ASSERT(sameBounds(converted[i], plan.segments[i]));
        const std::int64_t points = converted[i].points;
        RC_ASSERT(points == plan.segments[i].points);
        RC_ASSERT((points >> 32) == (plan.segments[i].points < 0 ? -1 : 0));
    }
}

RC_GTEST_PROP(FrequencyPlanProperties, GoToTheSdkInOrderWithTheLow32BitsOfTheirPoints, ())
{
    const auto given = *segments();
    const FrequencyPlan plan = toSdkFrequencyPlan(given);
    RC_ASSERT(plan.segments.size() == given.size());
    RC_ASSERT(plan.segments.capacity() == given.size());
    for (std::size_t i = 0; i < given.size(); ++i) {
        RC_ASSERT(sameBounds(plan.segments[i], given[i]));
        RC_ASSERT(std::bit_cast<std::uint32_t>(plan.segments[i].points)
                  == static_cast<std::uint64_t>(given[i].points) % 4'294'967'296U);
    }
}

} // namespace tov::testing

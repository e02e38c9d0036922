#include "service/calibration/frequencyplanconversion.h"

#include "service/support/convertlist.h"

namespace tov::devices::service {

std::vector<vna::FrequencySegment> fromSdkFrequencyPlan(const sdk::FrequencyPlan& plan)
{
    return convertList(plan.segments, [](const sdk::FrequencyPlan::Segment& segment) {
        return vna::FrequencySegment{segment.start, segment.stop, segment.points};
    });
}

sdk::FrequencyPlan toSdkFrequencyPlan(const std::vector<vna::FrequencySegment>& segments)
{
    return {convertList(segments, [](const vna::FrequencySegment& segment) {
        return sdk::FrequencyPlan::Segment{segment.start, segment.stop, static_cast<std::int32_t>(segment.points)};
    })};
}

} // namespace tov::devices::service

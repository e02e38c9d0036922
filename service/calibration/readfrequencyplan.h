#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/frequencyplan.h"
#include "service/support/convertlist.h"

namespace tov::devices::service {

/// The frequency plan of a calibration in the form `FrequencyPlan`, empty when there is no control.
template <typename FrequencyPlan, typename T>
FrequencyPlan readFrequencyPlan(const ReacquiringControl<T>& control)
{
    if (const auto locked = control.lock())
        return {convertList(locked->frequencyPlan().segments, [](const sdk::FrequencyPlan::Segment& segment) {
            return typename FrequencyPlan::Segment{segment.start, segment.stop, segment.points};
        })};
    return {};
}

} // namespace tov::devices::service

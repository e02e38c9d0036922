#pragma once

#include "sdk/frequencyplan.h"
#include "service/devicesservice_export.h"
#include "vna/frequencysegment.h"

#include <vector>

namespace tov::devices::service {

/// The segments of `plan` in its order, unchanged, with their number of points widened with its sign.
///
/// Thread: *any thread*.
DEVICESSERVICE_EXPORT std::vector<vna::FrequencySegment> fromSdkFrequencyPlan(const sdk::FrequencyPlan& plan);

/// The plan of `segments` in their order, unchanged, with the low 32 bits of their number of points.
///
/// Thread: *any thread*.
DEVICESSERVICE_EXPORT sdk::FrequencyPlan toSdkFrequencyPlan(const std::vector<vna::FrequencySegment>& segments);

} // namespace tov::devices::service

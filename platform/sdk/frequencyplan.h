#pragma once

#include <cstdint>
#include <vector>

namespace sdk {

/// The frequencies of a sweep, segment by segment.
struct FrequencyPlan
{
    struct Segment
    {
        double start = 0.0;
        double stop = 0.0;
        std::int32_t points = 0;
    };

    std::vector<Segment> segments;
};

} // namespace sdk

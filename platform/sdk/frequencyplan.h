#pragma once

#include <cstdint>
#include <vector>

namespace sdk {

/// The frequencies of a sweep, segment by segment.
struct FrequencyPlan
{
    /// The points from one frequency to another, in the instrument's unit. The library neither scales nor checks them.
    struct Segment
    {
        double start = 0.0;      ///< first bound
        double stop = 0.0;       ///< second bound
        std::int32_t points = 0; ///< number of points
    };

    std::vector<Segment> segments; ///< in an order that the library keeps
};

} // namespace sdk

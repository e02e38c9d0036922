#pragma once

#include <cstdint>

namespace tov::vna {

/// A segment of a sweep. The bounds are in the unit of whoever gives them; nothing orders them.
struct FrequencySegment
{
    double start = 0.0;      ///< first bound
    double stop = 0.0;       ///< second bound
    std::int64_t points = 0; ///< number of points
};

} // namespace tov::vna

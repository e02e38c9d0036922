#pragma once

#include <cstdint>

namespace sdk {

/// Names one control of an instrument. Opaque: compared for equality only.
struct Key
{
    std::uint64_t value = 0; ///< an opaque number

    /// Whether both name the same control.
    friend bool operator==(Key, Key) = default;
};

} // namespace sdk

#pragma once

#include <cstdint>

namespace sdk {

/// One factory correction, as the single bit that stands for it in the masks of the instrument.
enum class CorrectionFlag : std::uint16_t {};

} // namespace sdk

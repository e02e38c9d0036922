#pragma once

#include <system_error>

namespace tov::simulator {

/// What the simulated instrument answers when it cannot do what it was asked.
enum class SimulatorError {
    NotFound = 1,
    NoSpaceLeft,
    StoreUnavailable,
    OutOfRange,
    NoSuchPotentiometer,
    MemoryDamaged,
};

/// The category of these errors, with a text for each.
const std::error_category& simulatorCategory() noexcept;

std::error_code make_error_code(SimulatorError error) noexcept; // NOLINT(readability-identifier-naming)

} // namespace tov::simulator

template <>
struct std::is_error_code_enum<tov::simulator::SimulatorError> : std::true_type
{
};

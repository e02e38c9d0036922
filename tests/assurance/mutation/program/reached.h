#pragma once

#include <atomic>
#include <span>

namespace mutant {

/// By number, whether the places of the mutants were reached: by this process or by one that it has started to see it
/// die.
std::span<std::atomic<bool>> reached();

} // namespace mutant

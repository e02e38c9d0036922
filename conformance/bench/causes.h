#pragma once

#include "conformance/bench/bench.h"

#include <functional>

namespace tov::conformance {

/// By what the control is made to tell its observers of something: the provider's test hook, or an operation that tells
/// and leaves the instrument as it was, whose answer it waits for. It may be called on any thread, and does nothing
/// while the control is not offered.
///
/// Throws `NotApplicable` or `NotAllowed` when there is no way.
std::function<void()> causeOf(Bench& bench, const devices::ControlName& control);

} // namespace tov::conformance

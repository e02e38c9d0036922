#pragma once

#include "devices/controls.h"

namespace tov::conformance {

/// What an untyped pointer to an object with virtual functions turns out to be.
enum class Exactness {
    Exact,     ///< to what it should be
    Different, ///< to something else
    Unknown,   ///< the object does not tell: it was built without type information, or the compiler has another kind
};

/// Whether `control` points to exactly the SDK's interface of this kind.
Exactness exactness(const devices::ControlName& kind, void* control);

} // namespace tov::conformance

#pragma once

namespace sdk {

/// Models of instruments. A number that is not listed is a model that this SDK does not know yet.
enum class Model : int {
    Unknown = 0,
    TwoPort3 = 1,
    TwoPort8 = 2,
    FourPort8 = 3,
    TwoPort20 = 4,
    FourPort20 = 5,
};

} // namespace sdk

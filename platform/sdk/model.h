#pragma once

namespace sdk {

/// Models of instruments. A number that is not listed is a model that this SDK does not know yet.
enum class Model : int {
    Unknown = 0,    ///< the SDK could not tell
    TwoPort3 = 1,   ///< 2 ports, 3 GHz
    TwoPort8 = 2,   ///< 2 ports, 8 GHz
    FourPort8 = 3,  ///< 4 ports, 8 GHz
    TwoPort20 = 4,  ///< 2 ports, 20 GHz
    FourPort20 = 5, ///< 4 ports, 20 GHz
};

} // namespace sdk

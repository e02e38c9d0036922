#pragma once

#include <chrono>
#include <cstdint>

namespace tov::simulator {

/// When and where the simulated instrument answers the operations that answer by a callback.
///
/// Notifications always come on the simulator's own thread.
struct Timing
{
    /// On which thread an operation answers, and whether at once.
    enum class Answers {
        AtOnce, ///< on the caller's thread, before the operation returns
        Later,  ///< on the simulator's own thread
    };

    /// Whether answers that come `Later` keep the order of their questions.
    enum class Order {
        AsAsked,  ///< each answer after the same delay
        Shuffled, ///< each after a delay of its own, from none to twice `delay`, that `seed` determines
    };

    Answers answers = Answers::AtOnce;  ///< at once or later
    std::chrono::microseconds delay{0}; ///< from question to answer, `Later`; the mean of it when `Shuffled`
    Order order = Order::AsAsked;       ///< of the answers, if they come `Later`
    std::uint32_t seed = 1;             ///< of the `Shuffled` delays, and of the noise of the temperatures
};

} // namespace tov::simulator

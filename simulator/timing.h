#pragma once

#include <chrono>
#include <cstdint>

namespace tov::simulator {

/// When and where the simulated instrument answers the operations that answer by a callback.
///
/// Notifications always come on the simulator's own thread.
struct Timing
{
    enum class Answers {
        AtOnce, ///< on the caller's thread, before the operation returns
        Later,  ///< on the simulator's own thread
    };
    enum class Order {
        AsAsked,  ///< each answer after the same delay
        Shuffled, ///< each after a delay of its own, from none to twice `delay`, that `seed` determines
    };

    Answers answers = Answers::AtOnce;
    std::chrono::microseconds delay{0};
    Order order = Order::AsAsked;
    std::uint32_t seed = 1;
};

} // namespace tov::simulator

#pragma once

namespace tov::utils {

/// Two bounds, which nothing orders.
template <typename Number>
struct Range
{
    Number first{};  ///< first bound
    Number second{}; ///< second bound
};

} // namespace tov::utils

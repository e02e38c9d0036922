#pragma once

namespace tov::utils {

/// Two bounds, which nothing orders.
template <typename Number>
struct Range
{
    Number first{};
    Number second{};
};

} // namespace tov::utils

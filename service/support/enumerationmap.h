#pragma once

#include <array>
#include <cstddef>

namespace tov::devices::service {

/// An enumeration and the numbers that the SDK has for it, with what becomes of a number that is not listed.
template <typename Enumeration, std::size_t Count>
struct EnumerationMap
{
    struct Pair
    {
        Enumeration value;
        int number;
    };

    std::array<Pair, Count> pairs;
    Enumeration unknownFromSdk;
    int unknownToSdk;

    constexpr Enumeration fromSdk(int number) const
    {
        for (const Pair& pair : pairs)
            if (pair.number == number)
                return pair.value;
        return unknownFromSdk;
    }

    constexpr int toSdk(Enumeration value) const
    {
        for (const Pair& pair : pairs)
            if (pair.value == value)
                return pair.number;
        return unknownToSdk;
    }
};

/// The map of an enumeration of `Count` values, each of the SDK's number; any other value or number is `unknown`.
template <std::size_t Count, typename Enumeration>
constexpr EnumerationMap<Enumeration, Count> sameNumbers(Enumeration unknown)
{
    EnumerationMap<Enumeration, Count> map{
        .pairs = {}, .unknownFromSdk = unknown, .unknownToSdk = static_cast<int>(unknown)};
    int number = 0;
    for (auto& pair : map.pairs) {
        pair = {static_cast<Enumeration>(number), number};
        ++number;
    }
    return map;
}

} // namespace tov::devices::service

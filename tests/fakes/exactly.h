#pragma once

#include "fakes/undisturbed.h"

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace tov::testing {

/// Prints a value so that two values print alike only if they are the same: floating-point numbers with all
/// their digits, texts as they stand, everything else as the test library does.
template <typename Value>
std::string exactly(const Value& value)
{
    const Undisturbed undisturbed;
    if constexpr (std::is_floating_point_v<Value>) {
        std::array<char, 64> text{};
        return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
    } else if constexpr (std::is_convertible_v<Value, std::string_view>) {
        return '"' + std::string(std::string_view(value)) + '"';
    } else {
        return ::testing::PrintToString(value);
    }
}

template <typename Element>
std::string exactly(const std::vector<Element>& values)
{
    const Undisturbed undisturbed;
    std::string text;
    for (const Element& value : values)
        text += (text.empty() ? "" : ", ") + exactly(value);
    return "{" + text + "}";
}

} // namespace tov::testing

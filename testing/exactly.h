#pragma once

#include "devices/cxx23.h"
#include "testing/undisturbed.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <charconv>
#include <optional>
#include <ranges>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace tov::testing {

/// A value as text, so that two values look alike only if they are the same: floating-point numbers with all their
/// digits, enumerations as their numbers, texts as they stand in quotes, ranges as "{1, 2}", and "none" for an optional
/// value that is not there.
template <typename Value>
std::string exactly(const Value& value)
{
    const Undisturbed undisturbed;
    if constexpr (std::is_same_v<Value, bool>) {
        return value ? "true" : "false";
    } else if constexpr (std::is_enum_v<Value>) {
        return exactly(std::to_underlying(value));
    } else if constexpr (std::is_arithmetic_v<Value>) {
        std::array<char, 64> text{};
        return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
    } else if constexpr (std::is_convertible_v<Value, std::string_view>) {
        return '"' + std::string(std::string_view(value)) + '"';
    } else if constexpr (std::is_same_v<Value, QString>) {
        return exactly(value.toStdString());
    } else if constexpr (std::is_same_v<Value, QByteArray>) {
        return exactly(value.toStdString());
    } else if constexpr (requires { value.has_value(); }) {
        return value.has_value() ? exactly(*value) : "none";
    } else if constexpr (requires { value.first; }) {
        return '(' + exactly(value.first) + ", " + exactly(value.second) + ')';
    } else {
        static_assert(std::ranges::range<Value>);
        std::string text;
        for (const auto& element : value)
            text += (text.empty() ? "" : ", ") + exactly(element);
        return '{' + text + '}';
    }
}

} // namespace tov::testing

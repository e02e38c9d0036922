#pragma once

#include "console/exitstatus.h"

#include <charconv>
#include <concepts>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tov::console {

/// The whole number that `text` writes, in decimal or, with 0x in front, in hexadecimal; leading zeros change
/// nothing. Nothing when it is no number or does not fit.
template <std::integral Number>
std::optional<Number> parseNumber(std::string_view text)
{
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal)
        text.remove_prefix(2);

    Number number = 0;
    const char* const end = std::to_address(text.end());
    const auto result = std::from_chars(std::to_address(text.begin()), end, number, hexadecimal ? 16 : 10);
    if (result.ec != std::errc() || result.ptr != end)
        return {};
    return number;
}

/// The number that `text` writes; "nan" and "inf" are some too. Nothing when it is no number or does not fit.
template <std::floating_point Number>
std::optional<Number> parseReal(std::string_view text)
{
    Number number = 0;
    const char* const end = std::to_address(text.end());
    const auto result = std::from_chars(std::to_address(text.begin()), end, number);
    if (result.ec != std::errc() || result.ptr != end)
        return {};
    return number;
}

/// A whole number for the argument `name` of a command. Throws `CommandError` (BadUse).
template <std::integral Number>
Number requireNumber(const std::string& name, const std::string& text)
{
    if (const auto number = parseNumber<Number>(text))
        return *number;
    throw CommandError(ExitStatus::BadUse, "'" + text + "' is no value for " + name
                                               + ": use a whole number that fits, decimal or hexadecimal with 0x");
}

} // namespace tov::console

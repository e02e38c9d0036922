#pragma once

#include "tools/text/suggestions.h"

#include <charconv>
#include <concepts>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tov::inline tools {

/// The number that `text` writes, read by `std::from_chars` in `form`: a base or nothing. Nothing when it is no number
/// or does not fit.
template <typename Number, typename... Form>
std::optional<Number> parse(std::string_view text, Form... form)
{
    Number number = 0;
    const char* const end = std::to_address(text.end());
    const auto result = std::from_chars(std::to_address(text.begin()), end, number, form...);
    return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

/// A whole number, in decimal or, with 0x in front, in hexadecimal; leading zeros change nothing.
template <std::integral Number>
std::optional<Number> parseNumber(std::string_view text)
{
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    return hexadecimal ? parse<Number>(text.substr(2), 16) : parse<Number>(text, 10);
}

/// A number; "nan" and "inf" are some too.
template <std::floating_point Number>
std::optional<Number> parseReal(std::string_view text)
{
    return parse<Number>(text);
}

/// The whole numbers from `least` to `most`, as a message names them.
template <std::integral Number>
std::string wholeNumbers(Number least, Number most)
{
    return "a whole number from " + std::to_string(least) + " to " + std::to_string(most);
}

/// A whole number for the argument `name` of a command. Throws `BadUse`.
template <std::integral Number>
Number requireNumber(const std::string& name, const std::string& text)
{
    if (const auto number = parseNumber<Number>(text))
        return *number;
    using Limits = std::numeric_limits<Number>;
    throw BadUse(quoted(text) + " is no value for " + name + ": use " + wholeNumbers(Limits::min(), Limits::max())
                 + ", decimal or hexadecimal with 0x");
}

} // namespace tov::inline tools

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tov::inline tools {

/// `text` as a line of a terminal can show it: control characters, line ends among them, and bytes that are no UTF-8
/// stand as \x1B, a backslash as itself.
std::string displayed(std::string_view text);

/// How many columns of a terminal `text` takes, which `displayed()` gave.
std::size_t displayWidth(std::string_view text);

/// Whether every byte of `text` belongs to a character in UTF-8.
bool isUtf8(std::string_view text);

} // namespace tov::inline tools

#pragma once

#include <QString>

#include <expected>
#include <string>
#include <type_traits>

namespace tov::testing {

// How results of operations print that fail by a text or by one of an enumeration.

inline std::string reason(const QString& text)
{
    return text.toStdString();
}

template <typename Error>
    requires std::is_enum_v<Error>
std::string reason(Error error)
{
    return std::to_string(static_cast<unsigned int>(error));
}

template <typename Value, typename Error, typename Show>
std::string shown(const std::expected<Value, Error>& result, Show show)
{
    return result ? show(*result) : "failed: " + reason(result.error());
}

template <typename Error>
std::string shown(const std::expected<void, Error>& result)
{
    return result ? "done" : "failed: " + reason(result.error());
}

} // namespace tov::testing

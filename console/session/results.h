#pragma once

#include "tools/errors.h"

#include <QString>

#include <expected>
#include <string>
#include <type_traits>
#include <utility>

namespace tov::console {

/// The value of a result of the file store. Throws `Failure`, which has its own words, behind those in `what` if there
/// are some.
template <typename Value>
Value valueOf(std::expected<Value, QString> result, const std::string& what = {})
{
    if (!result)
        throw Failure((what.empty() ? "" : what + ": ") + result.error().toStdString());
    if constexpr (!std::is_void_v<Value>)
        return *std::move(result);
}

} // namespace tov::console

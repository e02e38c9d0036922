#pragma once

#include "devices/cxx23.h"

#include <QString>

#include <expected>

namespace tov::provider {

/// What was asked for, or a sentence for people that says why not.
template <typename T>
using Result = std::expected<T, QString>;

} // namespace tov::provider

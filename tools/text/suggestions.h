#pragma once

#include "tools/errors.h"

#include <string>
#include <vector>

namespace tov::inline tools {

/// What somebody typed, in single quotes for a message; what is long is shortened.
std::string quoted(const std::string& typed);

/// The one of `known` that was probably meant by `typed`; empty when none is close.
std::string closest(const std::string& typed, const std::vector<std::string>& known);

/// That there is no such thing: `what`, what was typed, `where`, and then what was probably meant or, failing that, all
/// that there is.
BadUse unknown(const std::string& what, const std::string& typed, const std::vector<std::string>& known,
               const std::string& where = {});

} // namespace tov::inline tools

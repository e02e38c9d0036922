#pragma once

#include "operations/operation.h"

#include <string>
#include <vector>

namespace tov::testing {

/// A row that is wrong, or an operation that is.
struct Canary
{
    std::string what;
    Operation operation;
};

/// Each must fail in at least one cell.
std::vector<Canary> canaries();

} // namespace tov::testing

#pragma once

#include "operations/operation.h"

#include <string>
#include <vector>

namespace tov::testing {

struct Completeness
{
    std::size_t kinds = 0;             ///< registered controls
    std::size_t publicOperations = 0;  ///< of their adapters
    std::vector<std::string> problems; ///< operations without a row, and rows without an operation
};

/// Compares a table with the recorded public operations of every adapter that is registered.
Completeness compareWithRecord(const Operations& table);

} // namespace tov::testing

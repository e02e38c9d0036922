#pragma once

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string_view>

namespace tov::testing {

/// Ends the program, which is a finding, unless `holds`.
inline void require(bool holds, std::string_view what)
{
    if (holds)
        return;
    std::cerr << "does not hold: " << what << "\n";
    std::abort();
}

/// Whether what is written again is to be damaged first, by which the fuzzer proves that it notices.
inline bool isWritingDamaged()
{
    static const char* const seeded = std::getenv("SEEDED_BUG");
    static const bool damaged = seeded != nullptr && std::strcmp(seeded, "damages-what-it-writes") == 0;
    return damaged;
}

} // namespace tov::testing

#include "mutant.h"

#include "reached.h"

#include <cstdlib>

namespace mutant {

bool is(int number)
{
    static const char* const named = std::getenv("MUTANT");
    static const int running = named != nullptr ? std::atoi(named) : 0;
    reached()[static_cast<std::size_t>(number)] = true;
    return number == running;
}

} // namespace mutant

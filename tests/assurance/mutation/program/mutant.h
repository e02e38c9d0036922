#pragma once

#include <mutex>

/// The mutant that the environment variable MUTANT names, of all that are in the copy of the library.
namespace mutant {

/// Whether the mutant of this number is the one that runs. Notes that its place was reached.
bool is(int number);

/// Whether none of them runs.
template <typename... Number>
bool none(Number... numbers)
{
    return !(static_cast<int>(is(numbers)) | ...);
}

/// Stands for the mutex that a mutant does not lock: nobody else waits for it.
inline thread_local std::mutex nobodys;

} // namespace mutant

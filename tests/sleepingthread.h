#pragma once

#ifdef __linux__

#include <fstream>
#include <string>

#include <sys/syscall.h>

namespace tov::testing {

/// Whether a thread sleeps in the kernel on a futex without a time-out now, as one does that waits for an answer.
/// `thread` is its folder in /proc.
inline bool sleepsForEver(const std::string& thread)
{
    long call = -1;
    std::string address;
    std::string operation;
    std::string value;
    std::string timeout;
    std::ifstream(thread + "/syscall") >> call >> address >> operation >> value >> timeout;
    return call == SYS_futex && timeout == "0x0";
}

} // namespace tov::testing

#endif

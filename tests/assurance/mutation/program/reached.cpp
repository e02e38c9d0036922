#include "reached.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace mutant {

namespace {

constexpr std::size_t room = 1 << 16; // for numbers

// In the file that MUTANT_REACHED names, if it names one, because processes share it.
std::span<std::atomic<bool>> mapped()
{
    const char* const name = std::getenv("MUTANT_REACHED");
    const int file = name != nullptr ? open(name, O_RDWR | O_CREAT, 0600) : -1;
    if (file >= 0 && ftruncate(file, room) != 0)
        throw std::runtime_error("MUTANT_REACHED has no room");
    const int flags = file >= 0 ? MAP_SHARED : MAP_PRIVATE | MAP_ANONYMOUS;
    void* const memory = mmap(nullptr, room, PROT_READ | PROT_WRITE, flags, file, 0);
    if (memory == MAP_FAILED)
        throw std::runtime_error("no memory for what is reached");
    if (file >= 0)
        close(file);
    return {static_cast<std::atomic<bool>*>(memory), room};
}

} // namespace

std::span<std::atomic<bool>> reached()
{
    static const std::span<std::atomic<bool>> all = mapped();
    return all;
}

} // namespace mutant

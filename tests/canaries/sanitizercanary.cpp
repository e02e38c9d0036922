// A program with a bug of the kind that is named on its command line. Each sanitizer build runs it and
// fails unless the sanitizer reports the bug: a silent sanitizer would make every other test worthless.

#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <thread>

namespace {

int useAfterFree()
{
    auto owner = std::make_unique<int>(1);
    const volatile int* const dangling = owner.get();
    owner.reset();
    return *dangling;
}

int overflow(int arguments)
{
    return std::numeric_limits<int>::max() - 1 + arguments;
}

int race()
{
    int shared = 0;
    std::thread other([&] { ++shared; });
    ++shared;
    other.join();
    return shared;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    if (std::strcmp(argv[1], "address") == 0)
        std::printf("%d\n", useAfterFree());
    else if (std::strcmp(argv[1], "undefined") == 0)
        std::printf("%d\n", overflow(argc));
    else if (std::strcmp(argv[1], "thread") == 0)
        std::printf("%d\n", race());
    else
        return 2;
    return 0;
}

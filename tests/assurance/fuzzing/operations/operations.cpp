// Sequences of what an application and an instrument do with adapters, on three threads in an order that the input
// gives, compared with a model of the contract step by step.

#include "fuzzer.h"
#include "operations/world.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static tov::testing::Workers workers;
    tov::testing::World(workers).run({data, size});
    return 0;
}

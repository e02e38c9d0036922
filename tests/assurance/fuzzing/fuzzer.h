#pragma once

#include <cstddef>
#include <cstdint>

/// What the fuzzer calls with each input: 0 when it has been tried, -1 when it is none.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

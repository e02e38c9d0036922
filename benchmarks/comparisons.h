#pragma once

#include "allocation/allocationcounter.h"

#include <benchmark/benchmark.h>

#include <optional>
#include <vector>

namespace tov::benchmarks {

/// A line of the result, about the benchmark `measured`.
struct Figure
{
    const char* what;
    const char* measured;
    const char* other;                // a benchmark that it is compared with, or a counter of its own
    std::optional<double> limit = {}; // what is still good enough; nothing: for information
    bool isBound = false;
};

inline std::vector<Figure> figures;

/// Adds a line, for use at namespace scope: how many times longer `measured` takes than `other` does. Where a limit is
/// set, `measured` must report its allocations, and these and the lookups must be 0.
inline bool compare(const Figure& figure)
{
    figures.push_back(figure);
    return true;
}

/// The same for what `measured` reports as the counter `other`.
inline bool bound(Figure figure)
{
    figure.isBound = true;
    return compare(figure);
}

/// Runs `call` and reports the calling thread's allocations a call and, where `lookups` counts them, the lookups.
template <typename Call>
void measure(benchmark::State& state, Call call, const long* lookups = nullptr)
{
    const long allocationsBefore = testing::allocations();
    const long lookupsBefore = lookups != nullptr ? *lookups : 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(call());
    const auto perCall = benchmark::Counter::kAvgIterations;
    state.counters["allocations"] = {double(testing::allocations() - allocationsBefore), perCall};
    if (lookups != nullptr)
        state.counters["lookups"] = {double(*lookups - lookupsBefore), perCall};
}

} // namespace tov::benchmarks

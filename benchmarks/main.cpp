#include "comparisons.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <thread>

// service-benchmarks [--json] [options of Google Benchmark]
int main(int argc, char** argv)
{
    using tov::benchmarks::ComparisonReporter;

    char** const end =
        std::remove_if(argv, argv + argc, [](const char* argument) { return std::strcmp(argument, "--json") == 0; });
    const auto form = end == argv + argc ? ComparisonReporter::Form::Table : ComparisonReporter::Form::Json;
    argc = static_cast<int>(end - argv);

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;

    // The standard library counts references without atomic operations until a first thread has started.
    std::thread([] {}).join();

    ComparisonReporter reporter(form);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.allGood() ? 0 : 1;
}

#include "comparisons.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <thread>

// service-benchmarks [--json] [--counts-only] [options of Google Benchmark]
int main(int argc, char** argv)
{
    using tov::benchmarks::ComparisonReporter;

    // Takes one of our own options away from the command line and tells whether it was there.
    const auto take = [&](const char* option) {
        char** const end =
            std::remove_if(argv, argv + argc, [&](const char* given) { return std::strcmp(given, option) == 0; });
        const bool found = end != argv + argc;
        argc = static_cast<int>(end - argv);
        return found;
    };
    const auto form = take("--json") ? ComparisonReporter::Form::Json : ComparisonReporter::Form::Table;
    const bool countsOnly = take("--counts-only");

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;

    const QCoreApplication application(argc, argv); // for the event loops that some are compared with

    // The standard library counts references without atomic operations until a first thread has started.
    std::thread([] {}).join();

    ComparisonReporter reporter(form, countsOnly);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.allGood() ? 0 : 1;
}

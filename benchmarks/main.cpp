#include "comparisons.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

namespace {

/// Collects the repetitions of every benchmark: of each the fastest counts, because everything else on the machine can
/// only slow it down, and of every counter the largest value.
class Collector final : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context& /*context*/) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            QJsonObject& numbers = measured[run.run_name.function_name];
            // The time of several threads is that of all their calls together, divided by their number.
            const double time = run.GetAdjustedRealTime() * static_cast<double>(run.threads);
            numbers["ns"] = std::min(numbers["ns"].toDouble(time), time);
            for (const auto& [counter, value] : run.counters)
                numbers[counter.c_str()] = std::max(numbers[counter.c_str()].toDouble(value), value.value);
        }
    }

    std::map<std::string, QJsonObject> measured; // by benchmark: its counters, and its time as "ns"
};

// With `countsOnly` times do not decide what is good.
QJsonObject resultOf(Collector& collector, bool countsOnly)
{
    QJsonArray comparisons;
    QJsonArray bounds;
    bool allGood = true;
    for (const auto& [what, measured, other, limit, isBound] : tov::benchmarks::figures) {
        const QJsonObject numbers = collector.measured[measured];
        const QJsonValue number = numbers.value(isBound ? other : "ns");
        const QJsonValue against = isBound ? 1.0 : collector.measured[other].value("ns");
        if (!number.isDouble() || !against.isDouble()) {
            std::fprintf(stderr, "not measured: %s\n", what);
            allGood = false;
            continue;
        }

        const double value = number.toDouble() / against.toDouble();
        const bool costsNothing = numbers["allocations"].toDouble(1) == 0.0 && numbers["lookups"].toDouble() == 0.0;
        const bool good = !limit || (isBound ? value <= *limit : (countsOnly || value <= *limit) && costsNothing);
        allGood = allGood && good;

        QJsonObject line{{"what", what},
                         {"measured", measured},
                         {isBound ? "counter" : "against", other},
                         {isBound ? "value" : "ratio", value},
                         {"limit", limit ? QJsonValue(*limit) : QJsonValue()},
                         {"good", good}};
        if (!isBound) {
            line["measured-ns"] = number;
            line["against-ns"] = against;
            for (const char* counter : {"allocations", "lookups"})
                line[counter] = numbers.contains(counter) ? numbers[counter] : QJsonValue();
        }
        (isBound ? bounds : comparisons).append(line);
    }
    return {{"comparisons", comparisons}, {"bounds", bounds}, {"good", allGood}};
}

QString shown(const QJsonValue& number)
{
    const double value = number.toDouble();
    return number.isNull() ? "-" : value < 1000 ? QString::number(value, 'g', 4) : QString::number(value, 'f', 0);
}

void print(const QJsonValue& lines, std::initializer_list<const char*> columns)
{
    std::printf("%-60s", "");
    for (const char* column : columns)
        std::printf(" %11s", column);
    for (const QJsonValue line : lines.toArray()) {
        std::printf("\n%-60s", qUtf8Printable(line["what"].toString()));
        for (const char* column : columns)
            std::printf(" %11s", qUtf8Printable(shown(line[column])));
        std::printf("%s", line["good"].toBool() ? "" : "  TOO MUCH");
    }
    std::printf("\n");
}

} // namespace

// service-benchmarks [--json] [--counts-only] [options of Google Benchmark]
int main(int argc, char** argv)
{
    // Takes one of our own options away from the command line and tells whether it was there.
    const auto take = [&](std::string_view option) {
        char** const end = std::remove(argv, argv + argc, option);
        return std::exchange(argc, static_cast<int>(end - argv)) != argc;
    };
    const bool json = take("--json");
    const bool countsOnly = take("--counts-only");

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;

    const QCoreApplication application(argc, argv); // for the event loops that some are compared with

    // The standard library counts references without atomic operations until a first thread has started.
    std::thread([] {}).join();

    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    const QJsonObject result = resultOf(collector, countsOnly);
    if (json) {
        std::fputs(QJsonDocument(result).toJson().constData(), stdout);
    } else {
        print(result["comparisons"], {"measured-ns", "against-ns", "ratio", "limit", "allocations", "lookups"});
        print(result["bounds"], {"value", "limit"});
    }
    return result["good"].toBool() ? 0 : 1;
}

#pragma once

#include <benchmark/benchmark.h>

#include <QJsonArray>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tov::benchmarks {

/// A line of the result: how many times longer `measured` takes than `against` does.
struct Comparison
{
    std::string what;
    std::string measured;
    std::string against;
    double limit = 0.0; // the ratio that is still good enough; 0: for information
};

/// A line of the result: something that a benchmark reports as a counter.
struct Bound
{
    std::string what;
    std::string measured;
    std::string counter;
    std::optional<double> limit; // what is still good enough; nothing: for information
};

/// Each adds a line to the result; for use at namespace scope beside the benchmarks.
bool compare(Comparison comparison);
bool bound(Bound bound);

/// Collects the repetitions of every benchmark and shows the comparisons: of each benchmark the fastest
/// repetition counts, because everything else on the machine can only slow it down.
///
/// Allocations are those of the calling thread. Times are per call as one thread sees it. Benchmarks may report the
/// counters "allocations" and "lookups" a call; where a limit is set the first must be reported, and both must be 0.
/// Of every counter the largest value counts.
class ComparisonReporter final : public benchmark::BenchmarkReporter
{
public:
    enum class Form { Table, Json };

    /// With `countsOnly` the times are shown but do not decide.
    ComparisonReporter(Form form, bool countsOnly);

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

    /// Whether every limit was kept and every comparison could be made.
    bool allGood() const noexcept { return m_allGood; }

private:
    struct Measured
    {
        std::string name;
        double nanoseconds;
        std::map<std::string, double> counters;

        std::optional<double> counter(const std::string& counter) const;
    };

    void showComparisons();
    void showBounds();

    const Measured* find(const std::string& name) const;

    Form m_form;
    bool m_countsOnly;
    bool m_allGood = true;
    std::vector<Measured> m_measured;
    QJsonArray m_comparisons;
    QJsonArray m_bounds;
};

} // namespace tov::benchmarks

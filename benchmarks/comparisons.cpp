#include "comparisons.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <utility>

namespace tov::benchmarks {

namespace {

std::vector<Comparison>& comparisons()
{
    static std::vector<Comparison> all;
    return all;
}

std::optional<double> counter(const benchmark::BenchmarkReporter::Run& run, const std::string& name)
{
    const auto found = run.counters.find(name);
    return found != run.counters.end() ? std::optional<double>(found->second) : std::nullopt;
}

std::string shown(const std::optional<double>& number)
{
    return number ? QString::number(*number).toStdString() : "-";
}

QJsonValue toJson(const std::optional<double>& number)
{
    return number ? QJsonValue(*number) : QJsonValue();
}

} // namespace

bool compare(Comparison comparison)
{
    comparisons().push_back(std::move(comparison));
    return true;
}

ComparisonReporter::ComparisonReporter(Form form, bool countsOnly)
    : m_form(form)
    , m_countsOnly(countsOnly)
{
}

bool ComparisonReporter::ReportContext(const Context&)
{
    return true;
}

void ComparisonReporter::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration)
            continue;
        // The time of several threads is that of all their calls together, divided by their number.
        const Measured fresh{run.run_name.function_name, run.GetAdjustedRealTime() * static_cast<double>(run.threads),
                             counter(run, "allocations"), counter(run, "lookups")};
        const auto known = std::ranges::find(m_measured, fresh.name, &Measured::name);
        if (known == m_measured.end()) {
            m_measured.push_back(fresh);
        } else {
            known->nanoseconds = std::min(known->nanoseconds, fresh.nanoseconds);
            known->allocations = std::max(known->allocations, fresh.allocations);
            known->lookups = std::max(known->lookups, fresh.lookups);
        }
    }
}

void ComparisonReporter::Finalize()
{
    QJsonArray json;
    if (m_form == Form::Table)
        std::printf("%-60s %9s %9s %6s %6s %7s %8s\n", "", "ns", "against", "ratio", "limit", "allocs", "lookups");
    for (const Comparison& comparison : comparisons()) {
        const Measured* const measured = find(comparison.measured);
        const Measured* const against = find(comparison.against);
        if (measured == nullptr || against == nullptr) {
            std::cerr << "not measured: " << comparison.what << "\n";
            m_allGood = false;
            continue;
        }

        const double ratio = measured->nanoseconds / against->nanoseconds;
        const bool limited = comparison.limit > 0.0;
        const bool good = !limited
                          || ((m_countsOnly || ratio <= comparison.limit) && measured->allocations == 0.0
                              && measured->lookups.value_or(0.0) == 0.0);
        m_allGood = m_allGood && good;

        if (m_form == Form::Table) {
            const std::string limit = limited ? shown(comparison.limit) : "-";
            std::printf("%-60s %9.1f %9.1f %6.2f %6s %7s %8s%s\n", comparison.what.c_str(), measured->nanoseconds,
                        against->nanoseconds, ratio, limit.c_str(), shown(measured->allocations).c_str(),
                        shown(measured->lookups).c_str(), good ? "" : "  TOO MUCH");
        } else {
            json.append(QJsonObject{{"what", QString::fromStdString(comparison.what)},
                                    {"measured", QString::fromStdString(comparison.measured)},
                                    {"against", QString::fromStdString(comparison.against)},
                                    {"measured-ns", measured->nanoseconds},
                                    {"against-ns", against->nanoseconds},
                                    {"ratio", ratio},
                                    {"limit", limited ? QJsonValue(comparison.limit) : QJsonValue()},
                                    {"allocations", toJson(measured->allocations)},
                                    {"lookups", toJson(measured->lookups)},
                                    {"good", good}});
        }
    }
    if (m_form == Form::Json)
        std::cout << QJsonDocument(QJsonObject{{"comparisons", json}, {"good", m_allGood}}).toJson().constData();
}

const ComparisonReporter::Measured* ComparisonReporter::find(const std::string& name) const
{
    const auto found = std::ranges::find(m_measured, name, &Measured::name);
    return found != m_measured.end() ? &*found : nullptr;
}

} // namespace tov::benchmarks

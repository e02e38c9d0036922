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

double counter(const benchmark::BenchmarkReporter::Run& run, const std::string& name)
{
    const auto found = run.counters.find(name);
    return found != run.counters.end() ? double(found->second) : 0.0;
}

} // namespace

bool compare(Comparison comparison)
{
    comparisons().push_back(std::move(comparison));
    return true;
}

ComparisonReporter::ComparisonReporter(Form form)
    : m_form(form)
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
        const Measured fresh{run.run_name.function_name + (run.threads > 1 ? "/2" : ""), run.GetAdjustedRealTime(),
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
        std::printf("%-64s %9s %9s %7s %7s %7s %8s\n", "", "ns", "against", "ratio", "limit", "allocs", "lookups");
    for (const Comparison& comparison : comparisons()) {
        const Measured* const measured = find(comparison.measured);
        const Measured* const against = find(comparison.against);
        if (measured == nullptr || against == nullptr)
            continue; // filtered out on the command line

        const double ratio = measured->nanoseconds / against->nanoseconds;
        const bool limited = comparison.limit > 0.0;
        const bool good =
            !limited || (ratio <= comparison.limit && measured->allocations == 0.0 && measured->lookups == 0.0);
        m_allGood = m_allGood && good;

        if (m_form == Form::Table) {
            const std::string limit = limited ? QString::number(comparison.limit).toStdString() : "-";
            std::printf("%-64s %9.1f %9.1f %7.2f %7s %7.0f %8.0f%s\n", comparison.what.c_str(), measured->nanoseconds,
                        against->nanoseconds, ratio, limit.c_str(), measured->allocations, measured->lookups,
                        good ? "" : "  TOO MUCH");
        } else {
            json.append(QJsonObject{{"what", QString::fromStdString(comparison.what)},
                                    {"measured", QString::fromStdString(comparison.measured)},
                                    {"against", QString::fromStdString(comparison.against)},
                                    {"measured-ns", measured->nanoseconds},
                                    {"against-ns", against->nanoseconds},
                                    {"ratio", ratio},
                                    {"limit", limited ? QJsonValue(comparison.limit) : QJsonValue()},
                                    {"allocations", measured->allocations},
                                    {"lookups", measured->lookups},
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

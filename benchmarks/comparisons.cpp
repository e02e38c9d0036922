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

std::vector<Bound>& bounds()
{
    static std::vector<Bound> all;
    return all;
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

bool bound(Bound bound)
{
    bounds().push_back(std::move(bound));
    return true;
}

std::optional<double> ComparisonReporter::Measured::counter(const std::string& counter) const
{
    const auto found = counters.find(counter);
    return found != counters.end() ? std::optional(found->second) : std::nullopt;
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
        Measured fresh{run.run_name.function_name, run.GetAdjustedRealTime() * static_cast<double>(run.threads), {}};
        for (const auto& [name, counter] : run.counters)
            fresh.counters[name] = counter;
        const auto known = std::ranges::find(m_measured, fresh.name, &Measured::name);
        if (known == m_measured.end()) {
            m_measured.push_back(fresh);
            continue;
        }
        known->nanoseconds = std::min(known->nanoseconds, fresh.nanoseconds);
        for (const auto& [name, value] : fresh.counters)
            known->counters[name] = std::max(known->counters[name], value);
    }
}

void ComparisonReporter::Finalize()
{
    showComparisons();
    showBounds();
    if (m_form == Form::Json) {
        const QJsonObject all{{"comparisons", m_comparisons}, {"bounds", m_bounds}, {"good", m_allGood}};
        std::cout << QJsonDocument(all).toJson().constData();
    }
}

void ComparisonReporter::showComparisons()
{
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

        const auto allocations = measured->counter("allocations");
        const auto lookups = measured->counter("lookups");
        const double ratio = measured->nanoseconds / against->nanoseconds;
        const bool limited = comparison.limit > 0.0;
        const bool good =
            !limited
            || ((m_countsOnly || ratio <= comparison.limit) && allocations == 0.0 && lookups.value_or(0.0) == 0.0);
        m_allGood = m_allGood && good;

        if (m_form == Form::Table) {
            const std::string limit = limited ? shown(comparison.limit) : "-";
            std::printf("%-60s %9.1f %9.1f %6.2f %6s %7s %8s%s\n", comparison.what.c_str(), measured->nanoseconds,
                        against->nanoseconds, ratio, limit.c_str(), shown(allocations).c_str(), shown(lookups).c_str(),
                        good ? "" : "  TOO MUCH");
        } else {
            m_comparisons.append(QJsonObject{{"what", QString::fromStdString(comparison.what)},
                                             {"measured", QString::fromStdString(comparison.measured)},
                                             {"against", QString::fromStdString(comparison.against)},
                                             {"measured-ns", measured->nanoseconds},
                                             {"against-ns", against->nanoseconds},
                                             {"ratio", ratio},
                                             {"limit", limited ? QJsonValue(comparison.limit) : QJsonValue()},
                                             {"allocations", toJson(allocations)},
                                             {"lookups", toJson(lookups)},
                                             {"good", good}});
        }
    }
}

void ComparisonReporter::showBounds()
{
    if (m_form == Form::Table)
        std::printf("\n%-60s %9s %9s\n", "", "", "limit");
    for (const Bound& bound : bounds()) {
        const Measured* const measured = find(bound.measured);
        const auto value = measured != nullptr ? measured->counter(bound.counter) : std::nullopt;
        if (!value) {
            std::cerr << "not measured: " << bound.what << "\n";
            m_allGood = false;
            continue;
        }

        const bool good = !bound.limit || *value <= *bound.limit;
        m_allGood = m_allGood && good;

        if (m_form == Form::Table) {
            const std::string limit = shown(bound.limit);
            std::printf("%-60s %9.5g %9s%s\n", bound.what.c_str(), *value, limit.c_str(), good ? "" : "  TOO MUCH");
        } else {
            m_bounds.append(QJsonObject{{"what", QString::fromStdString(bound.what)},
                                        {"measured", QString::fromStdString(bound.measured)},
                                        {"counter", QString::fromStdString(bound.counter)},
                                        {"value", *value},
                                        {"limit", toJson(bound.limit)},
                                        {"good", good}});
        }
    }
}

const ComparisonReporter::Measured* ComparisonReporter::find(const std::string& name) const
{
    const auto found = std::ranges::find(m_measured, name, &Measured::name);
    return found != m_measured.end() ? &*found : nullptr;
}

} // namespace tov::benchmarks

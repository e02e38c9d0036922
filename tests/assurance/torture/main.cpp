// Whatever fails once while an adapter works, all is well afterwards: each allocation in turn, and each call of the
// SDK.

#include "assurance/commandline.h"
#include "assurance/figures.h"
#include "disturbance.h"
#include "scenario.h"

#include <chrono>
#include <iostream>
#include <string>

#include <sanitizer/lsan_interface.h>

namespace tov::testing {

namespace {

using Of = Disturbance::Of;

struct Tally
{
    long long failingPoints = 0;
    long long throwingPoints = 0;
    long long wrong = 0;
};

std::string shown(const Disturbance& disturbance)
{
    return (disturbance.of == Of::Allocations ? "allocation " : "call of the SDK ") + std::to_string(disturbance.nth)
           + (disturbance.lasts ? " and all later ones" : "")
           + (disturbance.secondAfter > 0 ? " and one that comes " + std::to_string(disturbance.secondAfter) + " later"
                                          : "");
}

// What is wrong when this goes wrong in a scenario, or nothing.
std::string runOnce(const Scenario& scenario, const Disturbance& disturbance)
{
    const long before = liveBlocks();
    prepare(disturbance);
    Complaints complaints;
    scenario.run(complaints);
    complaints.expect(!complaints.text().empty() || liveBlocks() == before, "every block is freed");
    return complaints.text();
}

// At every place until none is left; gives how many there were.
long long tryEverywhere(const Scenario& scenario, Disturbance disturbance, long long& wrong, std::ostream* report)
{
    for (disturbance.nth = 1;; ++disturbance.nth) {
        const std::string complaints = runOnce(scenario, disturbance);
        if (!complaints.empty()) {
            ++wrong;
            if (report != nullptr)
                *report << "FAILED: " << scenario.name << ", " << shown(disturbance) << ":\n" << complaints;
        }
        if (!hasStruck())
            return disturbance.nth - 1;
    }
}

Tally tryAll(const std::vector<Scenario>& scenarios, long pairs, std::ostream* report)
{
    Tally tally;
    for (const Scenario& scenario : scenarios) {
        runOnce(scenario, {}); // what is made once and kept
        for (const bool lasts : {false, true}) {
            tally.failingPoints +=
                tryEverywhere(scenario, {.of = Of::Allocations, .lasts = lasts}, tally.wrong, report);
            tally.throwingPoints += tryEverywhere(scenario, {.of = Of::SdkCalls, .lasts = lasts}, tally.wrong, report);
        }
        for (long after = 1; after <= pairs; ++after) {
            tally.failingPoints +=
                tryEverywhere(scenario, {.of = Of::Allocations, .secondAfter = after}, tally.wrong, report);
            tally.throwingPoints +=
                tryEverywhere(scenario, {.of = Of::SdkCalls, .secondAfter = after}, tally.wrong, report);
        }
    }
    return tally;
}

// How many of what is broken was not noticed.
long long unnoticed(Figures& figures)
{
    long long noticed = 0;
    long long missed = 0;
    const __lsan::ScopedDisabler leaksAreMeant;
    for (const auto& scenarios : {brokenOperationScenarios(), brokenLifeScenarios()})
        for (const Scenario& broken : scenarios) {
            const bool isNoticed = tryAll({broken}, 0, nullptr).wrong > 0;
            ++(isNoticed ? noticed : missed);
            if (!isNoticed)
                std::cout << "NOT NOTICED: " << broken.name << '\n';
        }
    figures.add("broken adapters noticed", noticed);
    figures.add("broken adapters not noticed", missed);
    return missed;
}

int run(const CommandLine& commandLine)
{
    const auto begin = std::chrono::steady_clock::now();
    Figures figures;
    long long wrong = 0;
    const auto tryPart = [&](const std::string& part, const std::vector<Scenario>& scenarios) {
        const Tally tally = tryAll(scenarios, commandLine.isLong ? 40 : 10, &std::cout);
        wrong += tally.wrong;
        figures.add(part + ": scenarios", static_cast<long long>(scenarios.size()));
        figures.add(part + ": failing allocations tried", tally.failingPoints);
        figures.add(part + ": throwing calls of the SDK tried", tally.throwingPoints);
    };
    tryPart("operations", operationScenarios());
    tryPart("lives of adapters", lifeScenarios());
    tryPart("registration and conversion", otherScenarios());
    figures.add("wrong", wrong);
    const long long missed = unnoticed(figures);
    std::cout
        << "Not tried: SdkCalibrationControlWatcher. QObject::connect() of Qt 6.4.2 leaves a freed connection behind\n"
           "when memory runs out in it, and what the watcher's slots throw would pass through Qt's delivery of a "
           "signal.\n";
    return figures.finish(
        commandLine, begin,
        "Each allocation failed, and each call of the SDK threw, alone, in pairs and with all later ones",
        wrong == 0 && missed == 0);
}

} // namespace

} // namespace tov::testing

int main(int count, char** arguments)
{
    const tov::testing::CommandLine commandLine(count, arguments);
    return commandLine.isUnderstood ? tov::testing::run(commandLine) : 2;
}

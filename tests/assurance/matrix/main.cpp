// Every operation of every adapter, in every state of its control and with every way in which it is answered.

#include "assurance/commandline.h"
#include "assurance/figures.h"
#include "canaries.h"
#include "cell.h"
#include "completeness.h"
#include "operations/operations.h"

#include <chrono>
#include <iostream>
#include <map>
#include <sstream>
#include <string>

namespace tov::testing {

namespace {

struct Tally
{
    long long passed = 0;
    long long failed = 0;
    std::map<std::string, long long, std::less<>> notApplicable; // by its reason
};

Tally tryAll(const Operation& operation, std::ostream& report)
{
    Tally tally;
    for (const State state : states)
        for (const Way way : ways) {
            if (const auto reason = notApplicable(operation, state, way); !reason.empty()) {
                ++tally.notApplicable[std::string(reason)];
            } else if (const std::string wrong = tryCell(operation, state, way); wrong.empty()) {
                ++tally.passed;
            } else {
                ++tally.failed;
                report << "FAILED: " << operation.name << " when " << name(state) << ", " << name(way) << ":\n"
                       << wrong;
            }
        }
    return tally;
}

/// How many of what is broken was not noticed.
int unnoticed(const Operations& table, Figures& figures)
{
    int missed = 0;
    int noticed = 0;
    const auto look = [&](const std::string& what, bool isNoticed) {
        ++(isNoticed ? noticed : missed);
        if (!isNoticed)
            std::cout << "NOT NOTICED: " << what << '\n';
    };
    for (const Canary& canary : canaries()) {
        std::ostringstream report;
        look(canary.what, tryAll(canary.operation, report).failed > 0);
    }
    Operations incomplete = table;
    incomplete.pop_back();
    look("an operation without a row", compareWithRecord(incomplete).problems.size() == 1);
    figures.add("broken operations and rows noticed", noticed);
    figures.add("broken operations and rows not noticed", missed);
    return missed;
}

int run(const CommandLine& commandLine)
{
    const auto begin = std::chrono::steady_clock::now();
    const Operations table = allOperations();
    const Completeness completeness = compareWithRecord(table);
    for (const std::string& problem : completeness.problems)
        std::cout << "FAILED: " << problem << '\n';

    Tally sum;
    for (int round = 0; round < (commandLine.isLong ? 10 : 1); ++round)
        for (const Operation& operation : table) {
            const Tally tally = tryAll(operation, std::cout);
            sum.passed += tally.passed;
            sum.failed += tally.failed;
            for (const auto& [reason, count] : tally.notApplicable)
                sum.notApplicable[reason] += count;
        }

    Figures figures;
    figures.add("controls", static_cast<long long>(completeness.kinds));
    figures.add("public operations", static_cast<long long>(completeness.publicOperations));
    figures.add("rows", static_cast<long long>(table.size()));
    long long all = sum.passed + sum.failed;
    for (const auto& [reason, count] : sum.notApplicable)
        all += count;
    figures.add("cells", all);
    figures.add("passed", sum.passed);
    figures.add("failed", sum.failed);
    for (const auto& [reason, count] : sum.notApplicable)
        figures.add("not applicable: " + reason, count);
    const int missed = unnoticed(table, figures);
    return figures.finish(commandLine, begin, "Every operation in every state of its control, answered in every way",
                          sum.failed == 0 && missed == 0 && completeness.problems.empty());
}

} // namespace

} // namespace tov::testing

int main(int count, char** arguments)
{
    const tov::testing::CommandLine commandLine(count, arguments);
    return commandLine.isUnderstood ? tov::testing::run(commandLine) : 2;
}

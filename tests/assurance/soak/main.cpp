// Many instruments under load for long: memory stays flat, no notification is lost, a call costs what it costs with one
// instrument, and no thread starves.

#include "devices/controls.h"
#include "soak.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdlib>
#include <iostream>
#include <span>
#include <string>
#include <string_view>

namespace {

using namespace tov::testing;

struct Wish
{
    Plan plan;
    bool isLong = false;
    std::string json;
};

Wish wishOf(std::span<char*> arguments)
{
    Wish wish;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string_view word = arguments[i];
        const bool hasValue = i + 1 < arguments.size();
        if (word == "--long") {
            wish.isLong = true;
            wish.plan.instruments = 1000;
            if (wish.plan.time.count() == 0)
                wish.plan.time = std::chrono::hours(1);
        } else if (word == "--seconds" && hasValue) {
            wish.plan.time = std::chrono::seconds(std::stol(arguments[++i]));
        } else if (word == "--json" && hasValue) {
            wish.json = arguments[++i];
        } else {
            std::cerr << "usage: soak [--long] [--seconds N] [--json FILE]\n";
            std::exit(2);
        }
    }
    return wish;
}

// That the soak would notice `bug`.
bool isNoticed(const char* bug, const Plan& plan, std::string_view complaint)
{
    const Findings findings = soak(plan);
    for (const std::string& said : findings.complaints)
        if (said.find(complaint) != std::string::npos) {
            std::cout << bug << " on purpose is noticed: " << said << "\n";
            return true;
        }
    std::cerr << bug << " on purpose is not noticed\n";
    return false;
}

QJsonObject figuresOf(const Wish& wish, const Findings& findings, double seconds)
{
    QJsonObject figures{{"instruments", static_cast<qint64>(wish.plan.instruments)},
                        {"adapters", static_cast<qint64>(wish.plan.instruments * tov::devices::controls::all.size())},
                        {"threads", soakThreads},
                        {"complaints", static_cast<qint64>(findings.complaints.size())},
                        {"cost per call with one instrument in nanoseconds", findings.costAlone},
                        {"cost per call with all instruments in nanoseconds", findings.costAmongAll},
                        {"seconds", seconds}};
    if (wish.plan.time.count() == 0) {
        figures["rounds"] = findings.rounds;
        return figures;
    }
    figures["actions"] = static_cast<qint64>(findings.actions);
    figures["notifications heard"] = static_cast<qint64>(findings.notifications);
    figures["heap bytes in the beginning"] = findings.heapInTheBeginning;
    figures["heap bytes in the end"] = findings.heapInTheEnd;
    figures["cost ratio"] = findings.costRatio();
    figures["least share of a thread"] = findings.fairness;
    return figures;
}

} // namespace

int main(int argc, char** argv)
{
    const Wish wish = wishOf(std::span(argv, static_cast<std::size_t>(argc)));
    Plan small{.instruments = 20, .rounds = 10, .actions = 2000};
    small.leaks = true;
    bool isWell = isNoticed("leaking", small, "the heap held");
    small.leaks = false;
    small.losesNotifications = true;
    isWell = isNoticed("losing notifications", small, "notifications were told") && isWell;

    const auto begin = std::chrono::steady_clock::now();
    const Findings findings = soak(wish.plan);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    std::cout << wish.plan.instruments << " instruments with "
              << wish.plan.instruments * tov::devices::controls::all.size() << " adapters, " << soakThreads
              << " threads, " << findings.rounds << " rounds, " << findings.actions << " actions, "
              << findings.notifications << " notifications heard\nheap " << findings.heapInTheBeginning
              << " bytes, then " << findings.heapInTheEnd << "; a call " << findings.costAlone
              << " ns with one instrument, " << findings.costAmongAll << " ns with all: " << findings.costRatio()
              << " (at most " << mostCostRatio << "); the slowest thread did " << findings.fairness << " of its share; "
              << took.count() << " s\n";
    for (const std::string& complaint : findings.complaints)
        std::cerr << "soak: " << complaint << "\n";

    if (!wish.json.empty()) {
        QFile file(QString::fromStdString(wish.json));
        const QByteArray text = QJsonDocument(figuresOf(wish, findings, took.count())).toJson();
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
            std::cerr << "soak: " << wish.json << " cannot be written\n";
            return 1;
        }
    }
    return isWell && findings.complaints.empty() ? 0 : 1;
}

#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tov::testing {

/// How hard to try, for how long, and with which bug on purpose.
struct Plan
{
    std::size_t instruments = 200;
    int rounds = 100;                ///< unless there is a time
    std::chrono::seconds time{0};    ///< how long, whatever the rounds; 0: as the rounds say
    int actions = 30000;             ///< of each thread in a round, at least
    bool leaks = false;              ///< loses memory
    bool losesNotifications = false; ///< counts some as told that are not
};

/// What came of it.
struct Findings
{
    std::vector<std::string> complaints; ///< none when all is well

    int rounds = 0;
    std::uint64_t actions = 0;
    std::uint64_t notifications = 0;
    long long heapInTheBeginning = 0; ///< bytes, while all rest
    long long heapInTheEnd = 0;
    double fairness = 0;     ///< actions of the thread that did fewest, as a part of the mean
    double costAlone = 0;    ///< of a call in nanoseconds, while there is one instrument
    double costAmongAll = 0; ///< the same while there are all

    double costRatio() const { return costAmongAll / costAlone; }
};

constexpr int soakThreads = 8;
constexpr double mostCostRatio = 1.3;

/// Lets `soakThreads` threads call, tell, release and offer on instruments with an adapter of every kind each.
Findings soak(const Plan& plan);

} // namespace tov::testing

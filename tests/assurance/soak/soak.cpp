#include "soak.h"

#include "allocation/allocationcounter.h"
#include "application.h"
#include "rendezvous.h"
#include "service/servicecontrols.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <memory>
#include <numeric>
#include <random>
#include <thread>

namespace tov::testing {

namespace {

using Clock = std::chrono::steady_clock;
using Applications = std::vector<std::unique_ptr<Application>>;

void grow(Applications& applications, std::size_t count)
{
    devices::ControlRegistry registry;
    devices::service::servicecontrols::registrate(&registry);
    while (applications.size() < count)
        applications.push_back(std::make_unique<Application>(registry));
}

// Of this thread, so that what else the machine does costs nothing.
double nanosecondsOfThread()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

// What a call costs, of the same mix on one instrument after another. Each is called once before that: what is to be
// seen is whether the library's work grows, not that more memory than the caches hold is slow.
std::vector<double> costs(const Applications& applications)
{
    constexpr int batches = 400;
    constexpr int passes = 20;
    std::vector<double> each;
    for (std::size_t batch = 0; batch < batches; ++batch) {
        Application& application = *applications[batch * 7 % applications.size()];
        const auto callAll = [&application] {
            for (std::size_t index = 0; index < kindCount; ++index)
                application.call(index);
        };
        callAll();
        const double begin = nanosecondsOfThread();
        for (int pass = 0; pass < passes; ++pass)
            callAll();
        each.push_back((nanosecondsOfThread() - begin) / (passes * static_cast<double>(kindCount)));
    }
    return each;
}

/// The threads and what they have to do until they all rest.
class Threads
{
public:
    Threads(const Applications& applications, const Plan& plan)
        : m_applications(applications)
        , m_plan(plan)
    {
        for (unsigned int i = 0; i < soakThreads; ++i)
            m_threads.emplace_back([this, i] { work(i); });
    }
    Threads(const Threads&) = delete;
    Threads& operator=(const Threads&) = delete;
    ~Threads()
    {
        m_ends = true;
        m_begin.arriveAndWait();
    }

    /// Until every thread has done its part; who has done it goes on.
    void oneRound()
    {
        m_stillBusy = soakThreads;
        m_begin.arriveAndWait();
        m_end.arriveAndWait();
    }

    const std::array<std::uint64_t, soakThreads>& actions() const { return m_actions; }

private:
    void work(unsigned int self)
    {
        std::minstd_rand random(self + 1);
        for (m_begin.arriveAndWait(); !m_ends; m_begin.arriveAndWait()) {
            std::uint64_t done = 0;
            for (; m_stillBusy > 0; ++done) {
                act(static_cast<unsigned int>(random()));
                if (done + 1 == static_cast<std::uint64_t>(m_plan.actions))
                    --m_stillBusy;
            }
            m_actions.at(self) += done;
            m_end.arriveAndWait();
        }
    }

    void act(unsigned int chance)
    {
        Application& application = *m_applications[chance / 100 % m_applications.size()];
        const unsigned int action = chance % 100;
        if (action < 2)
            application.change();
        else if (action < 12)
            application.notify(chance / 7);
        else
            application.call(chance / 7 % kindCount);
        if (m_plan.leaks && action == 99)
            m_leaked = new char[1024]; // NOLINT(cppcoreguidelines-owning-memory): which is the bug
    }

    const Applications& m_applications;
    const Plan& m_plan;
    Rendezvous m_begin{soakThreads + 1};
    Rendezvous m_end{soakThreads + 1};
    std::atomic<int> m_stillBusy = 0;
    std::atomic<bool> m_ends = false;
    std::atomic<char*> m_leaked = nullptr;
    std::array<std::uint64_t, soakThreads> m_actions{};
    std::vector<std::jthread> m_threads;
};

long long mean(auto begin, auto end)
{
    return std::accumulate(begin, end, 0LL) / (end - begin);
}

void judge(Findings& findings, std::uint64_t told)
{
    const auto complain = [&](const std::string& what) { findings.complaints.push_back(what); };
    if (told != findings.notifications)
        complain(std::to_string(told) + " notifications were told and " + std::to_string(findings.notifications)
                 + " heard");
    const auto change = std::abs(findings.heapInTheEnd - findings.heapInTheBeginning);
    if (change * 100 > findings.heapInTheBeginning)
        complain("the heap held " + std::to_string(findings.heapInTheBeginning) + " bytes in the beginning and "
                 + std::to_string(findings.heapInTheEnd) + " in the end");
    if (findings.fairness < 0.1)
        complain("a thread did less than a tenth of what the others did");
    if (findings.costRatio() > mostCostRatio)
        complain("a call costs " + std::to_string(findings.costRatio()) + " times what it costs with one instrument");
}

} // namespace

Findings soak(const Plan& plan)
{
    const HeapBytes heap;
    Findings findings;
    Applications applications;
    grow(applications, 1);
    std::vector<double> alone = costs(applications);
    grow(applications, plan.instruments);
    findings.costAmongAll = median(costs(applications));

    losesNotifications = plan.losesNotifications;
    const std::uint64_t toldBefore = toldByControls + saidByAdapters;
    const std::uint64_t heardBefore = heard;
    std::vector<long long> bytes;
    const auto begin = Clock::now();
    {
        Threads threads(applications, plan);
        threads.oneRound(); // after which everything has been there once
        const auto goesOn = [&] {
            return plan.time.count() > 0 ? Clock::now() < begin + plan.time : findings.rounds < plan.rounds;
        };
        for (; goesOn(); ++findings.rounds) {
            threads.oneRound();
            for (const auto& application : applications)
                application->settle();
            bytes.push_back(heap.now());
        }
        const auto& actions = threads.actions();
        findings.actions = std::accumulate(actions.begin(), actions.end(), std::uint64_t{0});
        findings.fairness =
            static_cast<double>(std::ranges::min(actions)) * soakThreads / static_cast<double>(findings.actions);
    }
    losesNotifications = false;
    findings.notifications = heard - heardBefore;
    const std::uint64_t told = toldByControls + saidByAdapters - toldBefore;

    // The first and the last tenth, at most a minute of each.
    const std::chrono::duration<double> took = Clock::now() - begin;
    const double part = std::min(0.1, 60 / took.count());
    const auto some =
        std::max<std::ptrdiff_t>(1, static_cast<std::ptrdiff_t>(part * static_cast<double>(bytes.size())));
    findings.heapInTheBeginning = mean(bytes.begin(), bytes.begin() + some);
    findings.heapInTheEnd = mean(bytes.end() - some, bytes.end());

    // One instrument is measured before and after, because the machine may have become slower or faster.
    applications.resize(1);
    const std::vector<double> again = costs(applications);
    alone.insert(alone.end(), again.begin(), again.end());
    findings.costAlone = median(alone);
    judge(findings, told);
    return findings;
}

} // namespace tov::testing

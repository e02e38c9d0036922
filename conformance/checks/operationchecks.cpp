#include "conformance/bench/callbackoperations.h"
#include "conformance/bench/reads.h"
#include "conformance/bench/threads.h"
#include "conformance/checks/rulechecks.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>
#include <thread>

namespace tov::conformance::operations {

namespace {

constexpr std::size_t threads = 8;
constexpr std::chrono::milliseconds longEnough(300);

/// What goes wrong first on any of several threads, and whether they get on.
class Crowd
{
public:
    /// Does `work` again and again, on several threads at the same time, for a while.
    void work(const Bench& bench, const std::string& what, const std::function<void()>& work)
    {
        const auto end = std::chrono::steady_clock::now() + longEnough;
        std::atomic<std::size_t> ended = 0;
        const auto working = onThreads(threads, [&](const std::stop_token& /*stop*/) {
            do // NOLINT(*-avoid-do-while): a slow instrument has no time for a second round
                attempt(work);
            while (!isFinding() && std::chrono::steady_clock::now() < end);
            ++ended;
        });
        for (int seen = -1; ended < threads; std::this_thread::sleep_for(std::chrono::milliseconds(5)))
            if (const int now = m_steps; now != seen) { // that they get on shows that the check does
                bench.begin(what);
                seen = now;
            }
        const std::lock_guard guard(m_mutex);
        if (m_finding)
            throw Finding(what + ": " + *m_finding);
    }

    void step() { ++m_steps; }

private:
    void attempt(const std::function<void()>& work)
    {
        try {
            work();
        } catch (const std::exception& error) {
            tell(error.what());
        } catch (...) {
            tell("something is thrown");
        }
        step();
    }

    void tell(const char* text)
    {
        const std::lock_guard guard(m_mutex);
        if (!m_finding)
            m_finding = text;
    }

    bool isFinding() const
    {
        const std::lock_guard guard(m_mutex);
        return m_finding.has_value();
    }

    std::atomic<int> m_steps = 0;
    mutable std::mutex m_mutex; // guards all below
    std::optional<std::string> m_finding;
};

struct NamedCall
{
    std::string name;
    Call call;
};

// Those that read, and work when nobody else calls.
std::vector<NamedCall> readingCalls(Bench& bench, const devices::ControlName& kind,
                                    const std::shared_ptr<void>& control)
{
    std::vector<NamedCall> calls;
    for (const CallbackOperation& operation : callbackOperations())
        if (operation.control == kind && onlyReads(operation))
            try {
                const NamedCall call{named(kind, operation.name), operation.prepare(bench, control)};
                if (call.call.restore)
                    call.call.restore(); // a file that was made for it
                else if (!answerOf(bench, call.name, call.call.make))
                    calls.push_back(call);
            } catch (const NotLookedAt&) {
                continue; // the control has others
            }
    return calls;
}

void readOnManyThreads(Bench& bench, const devices::ControlName& kind)
{
    const auto control = bench.held(kind);
    bench.begin("operations of " + named(kind));
    try {
        readAll(kind, control);
    } catch (const std::exception& error) {
        throw NotApplicable(std::string("an operation throws: ") + error.what(), named(kind));
    }
    const auto calls = readingCalls(bench, kind, control);
    const auto patience = static_cast<int>(threads) * bench.settings().timeout; // one may come after the other

    Crowd crowd;
    crowd.work(bench, "operations of " + named(kind) + " on eight threads at the same time", [&] {
        readAll(kind, control);
        crowd.step();
        for (const NamedCall& each : calls) {
            const Answers answers;
            each.call.make(answers.callback());
            if (!answers.block(patience))
                throw Finding(each.name + " is not answered");
            if (answers.error())
                throw Finding(each.name + " fails: " + answers.error().message());
            crowd.step();
        }
    });
}

void viewOnManyThreads(Bench& bench, const View& view)
{
    const std::string name = named(view.control, view.name);
    const auto control = bench.held(view.control);
    bench.begin(name);
    std::function<QByteArray()> first;
    try {
        first = view.take(control);
    } catch (const std::exception& error) {
        throw NotApplicable(std::string("throws: ") + error.what(), name);
    }
    const QByteArray content = first();
    const std::string changing = "what it gives changes while it is looked at";
    Crowd crowd;
    crowd.work(bench, name + " on eight threads at the same time", [&] {
        const auto mine = view.take(control);
        const QByteArray before = mine();
        readAll(view.control, control);
        if (!view.changesByItself && mine() != before)
            throw Finding(changing);
        const auto again = view.take(control);
        if (again() != again())
            throw Finding(changing);
    });
    if (!view.changesByItself && first() != content)
        throw Finding(name + ": " + changing);
}

} // namespace

Seen bearManyThreads(Bench& bench)
{
    Tally tally;
    for (const devices::ControlName& kind : bench.offered())
        tally.attempt({}, [&] {
            readOnManyThreads(bench, kind);
            tally.looked(named(kind));
        });
    return tally.seen();
}

Seen giveViewsThatStay(Bench& bench)
{
    Tally tally;
    for (const devices::ControlName& kind : bench.offered())
        for (const View& view : views())
            if (view.control == kind)
                tally.attempt({}, [&] {
                    viewOnManyThreads(bench, view);
                    tally.looked(named(kind, view.name));
                });
    return tally.seen();
}

Seen bearQuestionsForAvailability(Bench& bench)
{
    const auto look = [&](const CallbackOperation& operation, const std::string& name, const Call& call) {
        const auto files = bench.held(operation.control);
        const auto ask = [&](const std::string& when) {
            bench.begin("isAvailable() of file-memory " + when + " " + name);
            try {
                readAll(operation.control, files);
            } catch (const std::exception& error) {
                throw Finding("isAvailable() throws " + when + " " + name + ": " + error.what());
            }
        };
        const Answers answers;
        ask("before");
        make(name, call.make, answers.callback());
        ask("while somebody waits for");
        if (!bench.waitUntil([&] { return answers.count() > 0; }))
            throw Finding(name + " is not answered when isAvailable() is called meanwhile");
    };
    return forEachOperation(bench, ofTheFileMemory, look);
}

} // namespace tov::conformance::operations

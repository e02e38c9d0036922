#include "conformance/bench/callbackoperations.h"
#include "conformance/bench/reads.h"
#include "conformance/checks/rulechecks.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <thread>

namespace tov::conformance::operations {

namespace {

struct NamedCall
{
    std::string name;
    Call call;
};

// All of a control that reads, and how it answers when nobody else calls.
class Readings
{
public:
    Readings(const Bench& bench, const devices::ControlName& kind, std::shared_ptr<void> control)
        : m_timeout(bench.settings().timeout)
        , m_kind(kind)
        , m_control(std::move(control))
    {
    }

    void add(const NamedCall& call) { m_calls.push_back(call); }

    /// Throws `Finding`; on any thread.
    void read() const
    {
        readAll(m_kind, m_control);
        for (const NamedCall& each : m_calls) {
            const Answers answers;
            each.call.make(answers.callback());
            if (!answers.block(m_timeout))
                throw Finding(each.name + " is not answered when other threads call too");
            if (answers.error())
                throw Finding(each.name + " fails when other threads call too: " + answers.error().message());
        }
    }

private:
    const std::chrono::milliseconds m_timeout;
    const devices::ControlName m_kind;
    const std::shared_ptr<void> m_control;
    std::vector<NamedCall> m_calls;
};

// What went wrong first on any of several threads.
class FirstFinding
{
public:
    template <typename Work>
    void attempt(Work work)
    try {
        work();
    } catch (const std::exception& error) {
        const std::lock_guard guard(m_mutex);
        if (!m_text)
            m_text = error.what();
    }

    bool isThere() const
    {
        const std::lock_guard guard(m_mutex);
        return m_text.has_value();
    }

    void throwIfThere(const std::string& where) const
    {
        const std::lock_guard guard(m_mutex);
        if (m_text)
            throw Finding(where + *m_text);
    }

private:
    mutable std::mutex m_mutex; // guards all below
    std::optional<std::string> m_text;
};

void readOnManyThreads(Bench& bench, const devices::ControlName& kind)
{
    constexpr int threads = 8;
    constexpr int rounds = 25;

    const auto control = bench.instrument()->findControl(kind.keys.sdk);
    if (!control)
        throw NotApplicable("is no longer offered", named(kind));
    Readings readings(bench, kind, control);
    bench.begin("operations of " + named(kind));
    try {
        readAll(kind, control);
    } catch (const std::exception& error) {
        throw NotApplicable(std::string("an operation throws: ") + error.what(), named(kind));
    }
    for (const CallbackOperation& operation : callbackOperations())
        if (operation.control.keys.sdk == kind.keys.sdk && operation.effect == CallbackOperation::Effect::Reads)
            try {
                const NamedCall call{named(kind, operation.name), operation.prepare(bench, control)};
                if (!answerOf(bench, call.name, call.call.make))
                    readings.add(call);
            } catch (const NotLookedAt&) {
                continue; // the control has others
            }

    bench.begin("operations of " + named(kind) + " on eight threads at the same time");
    FirstFinding finding;
    {
        std::vector<std::jthread> reading;
        for (int thread = 0; thread < threads; ++thread)
            reading.emplace_back([&] {
                for (int round = 0; round < rounds && !finding.isThere(); ++round)
                    finding.attempt([&] { readings.read(); });
            });
    }
    finding.throwIfThere(named(kind) + " on eight threads: ");
}

void viewOnManyThreads(Bench& bench, const View& view)
{
    constexpr int others = 3;
    constexpr int rounds = 2000;

    const std::string name = named(view.control, view.name);
    const auto control = bench.instrument()->findControl(view.control.keys.sdk);
    if (!control)
        throw NotApplicable("is no longer offered", named(view.control));
    bench.begin(name);
    const auto first = view.take(control);
    const QByteArray content = first();
    std::atomic<bool> torn = false;
    FirstFinding finding;
    {
        std::vector<std::jthread> asking;
        for (int thread = 0; thread < others; ++thread)
            asking.emplace_back([&] {
                finding.attempt([&] {
                    for (int round = 0; round < rounds && !torn; ++round) {
                        const auto mine = view.take(control);
                        const QByteArray before = mine();
                        readAll(view.control, control);
                        if (!view.changesByItself && mine() != before)
                            torn = true;
                        const auto again = view.take(control);
                        if (again() != again())
                            torn = true;
                    }
                });
            });
    }
    finding.throwIfThere(name + " on several threads: ");
    if (torn || (!view.changesByItself && first() != content))
        throw Finding("what " + name + " gives changes while it is looked at");
}

} // namespace

Seen bearManyThreads(Bench& bench)
{
    Tally tally;
    for (const devices::ControlName& kind : bench.offered())
        try {
            readOnManyThreads(bench, kind);
            tally.looked(named(kind));
        } catch (const NotApplicable& why) {
            tally.leftOut(why);
        }
    return tally.seen();
}

Seen giveViewsThatStay(Bench& bench)
{
    Tally tally;
    for (const devices::ControlName& kind : bench.offered())
        for (const View& view : views())
            if (view.control.keys.sdk == kind.keys.sdk)
                try {
                    viewOnManyThreads(bench, view);
                    tally.looked(named(kind, view.name));
                } catch (const NotApplicable& why) {
                    tally.leftOut(why);
                }
    return tally.seen();
}

Seen bearQuestionsForAvailability(Bench& bench)
{
    const auto look = [&](const CallbackOperation& operation, const std::string& name, const Call& call) {
        const auto files = bench.instrument()->findControl(operation.control.keys.sdk);
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
        call.make(answers.callback());
        ask("while somebody waits for");
        if (!bench.waitUntil([&] { return answers.count() > 0; }))
            throw Finding(name + " is not answered when isAvailable() is called meanwhile");
    };
    return forEachOperation(bench, ofTheFileMemory, look);
}

} // namespace tov::conformance::operations

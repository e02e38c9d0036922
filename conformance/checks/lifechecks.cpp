#include "conformance/bench/callbackoperations.h"
#include "conformance/bench/causes.h"
#include "conformance/bench/ears.h"
#include "conformance/bench/pump.h"
#include "conformance/bench/reads.h"
#include "conformance/checks/rulechecks.h"

#include <atomic>
#include <thread>
#include <utility>

namespace tov::conformance::life {

namespace {

struct Held
{
    devices::ControlName kind;
    std::shared_ptr<void> control;
};

std::vector<Held> holdAll(Bench& bench)
{
    std::vector<Held> all;
    for (const devices::ControlName& kind : bench.offered())
        all.push_back({kind, bench.instrument()->findControl(kind.keys.sdk)});
    return all;
}

// What it says when it is asked after its release is its own; that it can be asked is what counts.
void use(const Bench& bench, const Held& held)
{
    bench.begin("operations of " + named(held.kind) + ", which was released while it is held");
    try {
        readAll(held.kind, held.control);
    } catch (const std::exception&) {
        return;
    }
}

// The last owner of a control lets go of it inside one of its notifications.
void letGoWhenTold(Bench& bench, const devices::ControlName& kind, std::shared_ptr<void> control)
{
    const auto cause = causeOf(bench, kind);
    struct State
    {
        std::shared_ptr<void> control;
        std::atomic<bool> registered = false;
        std::atomic<bool> began = false;
        std::atomic<bool> released = false;
        std::atomic<bool> ended = false;
    };
    const auto state = std::make_shared<State>(); // which a notification that hangs goes on using
    Ear& ear = makeEar(kind);
    ear.whenTold = [state, patience = bench.settings().timeout] {
        if (!state->registered || state->began.exchange(true))
            return;
        const auto deadline = std::chrono::steady_clock::now() + patience;
        while (!state->released && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        if (state->released)
            state->control.reset();
        state->ended = true;
    };
    ear.addTo(control);
    state->control = std::move(control);
    state->registered = true;
    {
        const Pump pump(cause);
        if (!bench.waitUntil([&] { return state->began.load(); })) {
            ear.poison();
            throw NotApplicable("told nobody", named(kind));
        }
    }
    const Released released(bench);
    bench.begin("the last owner of " + named(kind) + " lets go of it inside a notification");
    state->released = true;
    const bool ended = bench.waitUntil([&] { return state->ended && !ear.isBeingTold(); });
    ear.poison();
    if (!ended)
        throw Finding("a notification of " + named(kind) + " does not end when the last owner lets go inside it");
    if (state->control)
        throw NotApplicable("waits for notifications when it is released", named(kind));
    bench.settle();
}

/// Calls that wait for an answer, as long as the provider can have them do.
class WaitingCalls
{
public:
    explicit WaitingCalls(Bench& bench)
        : m_bench(bench)
    {
        // All are prepared before the first is late, because to prepare takes answers.
        struct Prepared
        {
            const CallbackOperation& operation;
            std::string name;
            Call call;
        };
        std::vector<Prepared> all;
        try {
            forEachOperation(bench, onlyReads, [&](const auto& operation, const auto& name, const Call& call) {
                all.push_back({operation, name, call});
            });
        } catch (const NotApplicable&) {
            return; // there are none
        }
        std::vector<std::unique_ptr<Answering>> late;
        for (const Prepared& each : all) {
            late.push_back(answeringIfItCan(bench, each.operation, Bench::Answer::Late));
            bench.begin(each.name);
            const Answers answers;
            try {
                make(each.name, each.call.make, answers.callback());
            } catch (const NotApplicable&) {
                continue; // it throws
            }
            m_answers.emplace_back(each.name, answers);
        }
    }

    void expectAnswers() const
    {
        for (const auto& [name, answers] : m_answers) {
            m_bench.begin(name + ", whose control was released while it waits");
            if (!m_bench.waitUntil([&] { return answers.count() > 0; }, m_bench.patienceForLateAnswers()))
                throw Finding(name + " is not answered when its control is released meanwhile");
        }
    }

private:
    Bench& m_bench;
    NamedAnswers m_answers;
};

} // namespace

Seen instrumentOutlivesItsConnection(Bench& bench)
{
    if (bench.instrument().use_count() == 0)
        throw Finding("nobody owns the instrument that the connection gives");
    bench.close();
    for (const devices::ControlName& each : devices::controls::all) {
        bench.begin("findControl() for " + named(each) + " after the instrument was closed");
        if (bench.instrument()->findControl(each.keys.sdk))
            throw Finding("the instrument gives " + named(each) + " after it was closed");
    }
    return {"an instrument that is shared after it was closed", {}};
}

Seen lastOwnerDestroys(Bench& bench)
{
    bench.needs(Bench::Ability::ReleaseAndOffer);
    Tally tally;
    auto held = holdAll(bench);
    {
        const Released released(bench);
        for (const Held& each : held)
            use(bench, each);
        for (Held& each : held) {
            bench.begin("the last owner of " + named(each.kind) + " lets go of it on another thread");
            std::thread([control = std::exchange(each.control, nullptr)]() mutable { control.reset(); }).join();
            tally.looked(named(each.kind));
        }
    }
    tally.attempt("inside notifications", [&] {
        const auto told = forEachObservable(bench, isObservable,
                                            [&](const devices::ControlName& kind, std::shared_ptr<void> control) {
                                                letGoWhenTold(bench, kind, std::move(control));
                                            });
        tally.looked("inside notifications of", told);
    });
    return tally.seen();
}

Seen oldControlsGoAndNewOnesCome(Bench& bench)
{
    bench.needs(Bench::Ability::ReleaseAndOffer);
    const WaitingCalls waiting(bench);
    auto old = holdAll(bench);
    {
        const Released released(bench);
        waiting.expectAnswers();
    }

    Tally tally;
    std::vector<std::pair<devices::ControlName, std::weak_ptr<void>>> gone;
    for (const Held& each : old) {
        const auto found = bench.instrument()->findControl(each.kind.keys.sdk);
        if (found == each.control)
            throw Finding(named(each.kind) + " is the old object when it is offered again");
        gone.emplace_back(each.kind, each.control);
    }
    old.clear();
    bench.settle();
    for (const auto& [kind, control] : gone) {
        bench.begin("the old " + named(kind) + " goes");
        if (!bench.waitUntil([&] { return control.expired(); }))
            throw Finding("somebody keeps the old " + named(kind) + " after it was released");
        tally.looked(named(kind));
    }
    return tally.seen();
}

} // namespace tov::conformance::life

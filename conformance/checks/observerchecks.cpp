#include "conformance/bench/callbackoperations.h"
#include "conformance/bench/causes.h"
#include "conformance/bench/ears.h"
#include "conformance/bench/pump.h"
#include "conformance/bench/reads.h"
#include "conformance/checks/rulechecks.h"

#include <algorithm>
#include <atomic>
#include <optional>
#include <thread>

namespace tov::conformance::observers {

namespace {

using Control = std::shared_ptr<void>;
using Kind = devices::ControlName;
using namespace std::chrono_literals;

// One that is told for a while, so that what is wrong has time to happen meanwhile.
Ear& makeSlowEar(const Kind& kind)
{
    Ear& ear = makeEar(kind);
    ear.whenTold = [] { // to sleep may take far longer, and then more is told than anybody can hear
        for (const auto end = std::chrono::steady_clock::now() + 30us; std::chrono::steady_clock::now() < end;)
            std::this_thread::yield();
    };
    return ear;
}

void expectSilence(const std::vector<Ear*>& ears, const std::string& when)
{
    const auto wasTold = [](const Ear* ear) { return ear->toldTooLate() > 0; };
    if (const auto count = std::ranges::count_if(ears, wasTold); count > 0)
        throw Finding("a notification reached " + std::to_string(count) + " of " + std::to_string(ears.size())
                      + " observers " + when);
}

// What may throw and must not.
template <typename Work>
void expectNoException(const std::string& what, Work work)
try {
    work();
} catch (const std::exception& error) {
    throw Finding(what + ": " + error.what());
}

// Causes a notification some times, and waits until it is told: somebody else heard of it.
void causeSome(Bench& bench, const Kind& kind, const std::function<void()>& cause)
{
    Ear& witness = makeEar(kind);
    const Registered registered(witness, bench.held(kind));
    const int before = witness.told();
    for (int times = 0; times < 3; ++times)
        cause();
    expectTold(bench, witness, kind, before);
    bench.settle();
}

// How long it takes until somebody is told.
std::chrono::milliseconds firstNotification(Bench& bench, const Kind& kind, const Control& control)
{
    Ear& ear = makeEar(kind);
    const Registered registered(ear, control);
    const int before = ear.told();
    const auto start = std::chrono::steady_clock::now();
    expectTold(bench, ear, kind, before);
    return std::chrono::ceil<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
}

void expectNotBeingTold(const Ear& ear, const std::string& when)
{
    if (ear.isBeingTold())
        throw Finding("a notification still ran in an observer " + when);
}

// Lets an observer go that is being told, and stays so until it was looked whether the removal waits for it.
void leaveWhileTold(const Bench& bench, Ear& ear, const Control& control, std::chrono::milliseconds patience,
                    const std::string& removed)
{
    struct State
    {
        std::atomic<bool> leaving = false;
        std::atomic<bool> left = false;
    };
    const auto state = std::make_shared<State>();
    ear.whenTold = [state] {
        const auto waitFor = [](const std::atomic<bool>& flag, std::chrono::milliseconds most) {
            for (const auto end = std::chrono::steady_clock::now() + most;
                 !flag && std::chrono::steady_clock::now() < end;)
                std::this_thread::sleep_for(100us);
        };
        waitFor(state->leaving, 200ms);
        waitFor(state->left, 50ms); // a removal that waits goes on waiting meanwhile
    };
    ear.addTo(control);
    bench.waitUntil([&] { return ear.isBeingTold(); }, patience);
    state->leaving = true;
    ear.removeFrom(control);
    ear.poison();
    expectNotBeingTold(ear, removed);
    state->left = true;
}

void comeAndGoWhileTold(Bench& bench, const Kind& kind, const Control& control)
{
    constexpr std::size_t rounds = 2000;
    constexpr std::size_t atLeast = 3;
    constexpr auto longEnough = 500ms;

    const auto cause = causeOf(bench, kind);
    const std::string what = "observers of " + named(kind) + " that come and go";
    const std::string removed = "when removeObserver() of " + named(kind) + " had returned";
    std::uniform_int_distribution<int> pause(0, 100); // µs
    std::vector<Ear*> ears;
    bench.begin(what);
    {
        const Pump pump(cause);
        const auto patience = std::max(2 * firstNotification(bench, kind, control), 20ms);
        const auto end = std::chrono::steady_clock::now() + longEnough;
        for (std::size_t round = 0; round < atLeast; ++round) {
            leaveWhileTold(bench, *ears.emplace_back(&makeEar(kind)), control, patience, removed);
            bench.begin(what);
        }
        while (ears.size() < 2 * atLeast || (ears.size() < rounds && std::chrono::steady_clock::now() < end)) {
            Ear& ear = *ears.emplace_back(&makeSlowEar(kind));
            ear.addTo(control);
            const int before = ear.told();
            bench.waitUntil([&] { return ear.isBeingTold() || ear.told() > before; }, patience);
            std::this_thread::sleep_for(std::chrono::microseconds(pause(bench.random())));
            ear.removeFrom(control);
            ear.poison();
            expectNotBeingTold(ear, removed);
            if (ears.size() <= 2 * atLeast)
                bench.begin(what);
        }
    }
    bench.settle();
    expectSilence(ears, removed);
}

// Does with the control whatever reads. An operation may throw; that it returns is what counts.
void use(sdk::IVna& instrument, const Kind& kind, const Control& control, const std::vector<Call>& calls)
try {
    instrument.findControl(kind.keys.sdk);
    readAll(kind, control);
    for (const Call& call : calls)
        call.make([](std::error_code /*error*/) {});
} catch (const std::exception&) {
    return;
}

} // namespace

Seen hearNothingOnceRemoved(Bench& bench)
{
    return forEachObservable(bench, isObservable, [&](const Kind& kind, const Control& control) {
        comeAndGoWhileTold(bench, kind, control);
    });
}

Seen areIgnoredWhenUnknown(Bench& bench)
{
    return forEachObservable(bench, isObservable, [&](const Kind& kind, const Control& control) {
        const std::string removal = "removeObserver() of " + named(kind) + " for an observer that is not registered";
        Ear& stranger = makeEar(kind);
        Ear& known = makeEar(kind);
        const auto remove = [&](Ear& ear) {
            bench.begin(removal);
            expectNoException(removal, [&] { ear.removeFrom(control); });
        };
        const auto isTold = [&](const std::function<void()>& cause) {
            const int before = known.told();
            cause();
            return bench.waitUntil([&] { return known.told() > before; });
        };
        remove(stranger);
        const Registered registered(known, control);
        remove(stranger);
        try {
            const auto cause = causeOf(bench, kind);
            if (isTold(cause)) {
                remove(stranger);
                if (!isTold(cause) && bench.held(kind) == control)
                    throw Finding(removal + " has another one hear nothing any more");
            }
        } catch (const NotLookedAt&) {
            bench.begin(removal); // nobody can be told, so nobody can miss it
        }
        known.removeFrom(control);
        remove(known);
    });
}

Seen hearNothingOfControlsThatAreGone(Bench& bench)
{
    constexpr int rounds = 10;

    bench.needs(Bench::Ability::ReleaseAndOffer);
    return forEachObservable(bench, isObservable, [&](const Kind& kind, Control control) {
        const auto cause = causeOf(bench, kind);
        const std::string gone = "when the last owner of " + named(kind) + " had let go of it";
        std::vector<Ear*> ears;
        int lettingGo = 0;
        {
            const Pump pump(cause);
            for (int round = 0; round < rounds; ++round) {
                Ear& ear = *ears.emplace_back(&makeSlowEar(kind));
                ear.addTo(control);
                const int before = ear.told();
                if (!bench.waitUntil([&] { return ear.told() > before; })) {
                    ear.removeFrom(control);
                    throw NotApplicable("told nobody", named(kind));
                }
                {
                    const Released released(bench);
                    const std::weak_ptr<void> owned = control;
                    control.reset();
                    if (owned.expired()) { // nobody else owns it, such as a call that waits in it
                        ear.poison();
                        ++lettingGo;
                        expectNotBeingTold(ear, gone);
                    }
                }
                control = bench.held(kind);
            }
        }
        causeSome(bench, kind, cause);
        expectSilence(ears, gone);
        if (lettingGo == 0)
            throw NotApplicable("has other owners each time", named(kind));
    });
}

Seen mayRegisterTwice(Bench& bench)
{
    return forEachObservable(bench, isObservable, [&](const Kind& kind, const Control& control) {
        const std::string again = "addObserver() of " + named(kind) + " for an observer that is registered";
        Ear& ear = makeEar(kind);
        const Registered registered(ear, control);
        bench.begin(again);
        expectNoException(again, [&] { ear.addTo(control); });
    });
}

Seen areNotRegisteredByWhatThrows(Bench& bench)
{
    return forEachObservable(bench, isObservable, [&](const Kind& kind, const Control& control) {
        const auto cause = causeOf(bench, kind);
        Ear& ear = makeEar(kind);
        bench.setAnswer(kind, "addObserver", Bench::Answer::Throwing);
        bool thrown = false;
        bench.begin("addObserver() of " + named(kind) + " that throws");
        try {
            ear.addTo(control);
        } catch (const std::exception&) {
            thrown = true;
        }
        bench.setAnswer(kind, "addObserver", Bench::Answer::AsUsual);
        causeSome(bench, kind, cause);
        if (!thrown) {
            ear.removeFrom(control);
            throw NotApplicable("addObserver() does not throw when it is told to", named(kind));
        }
        ear.poison();
        if (ear.told() > 0)
            throw Finding("addObserver() of " + named(kind) + " throws and has registered its observer");
    });
}

Seen areRemovedWithEveryRegistration(Bench& bench)
{
    return forEachObservable(bench, isObservable, [&](const Kind& kind, const Control& control) {
        const auto cause = causeOf(bench, kind);
        const std::string removal = "removeObserver() of " + named(kind);
        std::vector<Ear*> ears;
        Ear& ear = *ears.emplace_back(&makeEar(kind));
        ear.addTo(control);
        try {
            ear.addTo(control);
        } catch (const std::exception&) {
            bench.begin(removal); // that it throws is another rule's
        }
        bench.begin(removal);
        expectNoException(removal + " throws", [&] { ear.removeFrom(control); });
        ear.poison();
        causeSome(bench, kind, cause);
        expectSilence(ears, "that had been registered twice and was removed from " + named(kind));
    });
}

Seen mayBeRemovedInsideTheirRegistration(Bench& bench)
{
    return forEachObservable(bench, isObservable, [&](const Kind& kind, const Control& control) {
        const auto cause = causeOf(bench, kind);
        const auto self = std::this_thread::get_id();
        Ear& ear = makeEar(kind);
        bool registering = true;
        bool removed = false;
        ear.whenTold = [&] {
            if (std::this_thread::get_id() != self || !registering || removed)
                return;
            removed = true;
            ear.removeFrom(control);
        };
        bench.begin("an observer of " + named(kind) + " that is removed inside addObserver()");
        ear.addTo(control);
        registering = false;
        if (!removed) {
            ear.poison();
            ear.removeFrom(control);
            throw NotApplicable("tells nobody inside addObserver()", named(kind));
        }
        ear.poison();
        causeSome(bench, kind, cause);
        if (ear.toldTooLate() > 0)
            throw Finding("an observer of " + named(kind)
                          + " that is removed when it is told inside addObserver() is registered afterwards");
    });
}

Seen hearOnThreadsOfTheirOwn(Bench& bench)
{
    return forEachObservable(bench, isObservable, [&](const Kind& kind, const Control& control) {
        const auto cause = causeOf(bench, kind);
        const auto self = std::this_thread::get_id();
        Ear& ear = makeEar(kind);
        std::atomic<bool> registering = true;
        std::atomic<bool> onOurs = false;
        ear.whenTold = [&] {
            if (std::this_thread::get_id() == self && !registering)
                onOurs = true;
        };
        bench.begin("the thread of notifications of " + named(kind));
        const Registered registered(ear, control);
        registering = false;
        causeSome(bench, kind, cause);
        if (ear.told() == 0)
            throw NotApplicable("told nobody", named(kind));
        if (onOurs)
            throw Finding(named(kind) + " notifies on a thread of the application's");
    });
}

Seen mayUseTheControlWhenTold(Bench& bench)
{
    return forEachObservable(bench, isObservable, [&](const Kind& kind, const Control& control) {
        const auto cause = causeOf(bench, kind);
        std::vector<Call> calls;
        for (const CallbackOperation& operation : callbackOperations())
            if (operation.control == kind && onlyReads(operation))
                calls.push_back(operation.prepare(bench, control));
        struct State
        {
            std::atomic<bool> registered = false;
            std::atomic<bool> began = false;
            std::atomic<bool> ended = false;
        };
        const auto state = std::make_shared<State>(); // which a notification that hangs goes on using
        Ear& ear = makeEar(kind);
        ear.whenTold = [=, instrument = bench.instrument()] {
            if (!state->registered || state->began.exchange(true))
                return;
            use(*instrument, kind, control, calls);
            state->ended = true;
        };
        const std::string what = "findControl() or an operation of " + named(kind) + " inside a notification";
        bench.begin(what);
        const Registered registered(ear, control);
        state->registered = true;
        cause();
        if (!bench.waitUntil([&] { return state->began.load(); }))
            throw NotApplicable("told nobody", named(kind));
        if (!bench.waitUntil([&] { return state->ended.load(); }))
            throw Finding(what + " does not return");
    });
}

Seen registerAgainWithoutExceptions(Bench& bench)
{
    constexpr int rounds = 100;

    return forEachObservable(bench, isCalibrationController, [&](const Kind& kind, const Control& control) {
        const auto registerIt = [&](const Control& there) { const Registered registered(makeEar(kind), there); };
        const auto registerAgain = [&](const Control& there) {
            expectNoException("addObserver() of " + named(kind) + " throws later than at its first registration",
                              [&] { registerIt(there); });
        };
        registerIt(control);
        for (int round = 0; round < rounds; ++round)
            registerAgain(control);
        if (!bench.can(Bench::Ability::ReleaseAndOffer))
            return;
        {
            const Released released(bench);
        }
        registerAgain(bench.held(kind));
    });
}

Seen changeObserversWhenTold(Bench& bench)
{
    return forEachObservable(bench, isCalibration, [&](const Kind& kind, const Control& control) {
        const auto cause = causeOf(bench, kind);
        struct State
        {
            std::atomic<bool> began = false;
            std::atomic<bool> ended = false;
        };
        const auto state = std::make_shared<State>(); // which a notification that hangs goes on using
        Ear& ear = makeEar(kind);
        Ear& other = makeEar(kind);
        ear.whenTold = [&ear, &other, control, state] {
            if (state->began.exchange(true))
                return;
            ear.removeFrom(control);
            other.addTo(control);
            other.removeFrom(control);
            state->ended = true;
        };
        bench.begin("observers of " + named(kind) + " that come and go inside a notification");
        const Registered registered(ear, control);
        cause();
        expectTold(bench, ear, kind);
        if (!bench.waitUntil([&] { return state->ended.load(); }))
            throw Finding("addObserver() or removeObserver() of " + named(kind)
                          + " does not return inside a notification");
    });
}

} // namespace tov::conformance::observers

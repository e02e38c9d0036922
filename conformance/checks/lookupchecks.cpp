#include "conformance/bench/causes.h"
#include "conformance/bench/ears.h"
#include "conformance/bench/exactness.h"
#include "conformance/bench/threads.h"
#include "conformance/checks/rulechecks.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace tov::conformance::lookup {

namespace controls = devices::controls;

namespace {

// Keys that no control has.
std::vector<sdk::Key> unknownKeys(Bench& bench)
{
    std::vector<sdk::Key> keys{sdk::Key{0}};
    while (keys.size() < 20) {
        const sdk::Key key{bench.random()()};
        const auto isKey = [=](const devices::ControlName& each) { return each.keys.sdk == key; };
        if (std::ranges::none_of(controls::all, isKey))
            keys.push_back(key);
    }
    return keys;
}

// Keys for which there is nothing now.
std::vector<sdk::Key> absentKeys(Bench& bench)
{
    std::vector<sdk::Key> keys = unknownKeys(bench);
    for (const devices::ControlName& each : controls::all)
        if (!bench.instrument()->findControl(each.keys.sdk))
            keys.push_back(each.keys.sdk);
    return keys;
}

void expectNothing(Bench& bench, const devices::ControlName& control, const std::string& when)
{
    bench.begin("findControl() for " + named(control) + " " + when);
    if (!bench.waitUntil([&] { return bench.instrument()->findControl(control.keys.sdk) == nullptr; }))
        throw Finding("findControl() gives " + named(control) + " " + when);
}

// What is found for a control while controls come and go.
class Lookups
{
public:
    explicit Lookups(const std::vector<devices::ControlName>& controls)
        : m_controls(controls)
    {
    }

    void look(sdk::IVna& instrument)
    try {
        for (const devices::ControlName& control : m_controls)
            if (const auto found = instrument.findControl(control.keys.sdk))
                if (exactness(control, found.get()) == Exactness::Different)
                    m_different = true;
    } catch (...) {
        m_thrown = true;
    }

    void judge(const std::string& when) const
    {
        if (m_thrown)
            throw Finding("findControl() throws " + when);
        if (m_different)
            throw Finding("findControl() gives something else than the control " + when);
    }

private:
    const std::vector<devices::ControlName> m_controls;
    std::atomic<bool> m_different = false;
    std::atomic<bool> m_thrown = false;
};

void lookOnManyThreads(Bench& bench, const std::vector<devices::ControlName>& offered)
{
    constexpr int threads = 8;
    constexpr int rounds = 20;
    const bool comeAndGo = bench.can(Bench::Ability::ReleaseAndOffer);
    const std::string when =
        comeAndGo ? "on eight threads while controls are released and offered" : "on eight threads";

    bench.begin("findControl() " + when);
    Lookups lookups(offered);
    {
        const auto looking = onThreads(threads, [&](const std::stop_token& stop) {
            for (int round = 0; round < rounds || !stop.stop_requested(); ++round)
                lookups.look(*bench.instrument());
        });
        for (int round = 0; comeAndGo && round < rounds; ++round) {
            bench.releaseControls();
            bench.offerControls();
        }
    }
    lookups.judge(when);
}

Seen lookWhenTold(Bench& bench, const std::vector<devices::ControlName>& offered)
{
    return forEachObservable(bench, isObservable,
                             [&](const devices::ControlName& control, const std::shared_ptr<void>& found) {
                                 const std::string when = "inside a notification of " + named(control);
                                 const auto cause = causeOf(bench, control);
                                 Ear& ear = makeEar(control);
                                 Lookups lookups(offered);
                                 ear.whenTold = [&] { lookups.look(*bench.instrument()); };
                                 bench.begin("findControl() " + when);
                                 const Registered registered(ear, found);
                                 cause();
                                 expectTold(bench, ear, control);
                                 bench.settle();
                                 lookups.judge(when);
                             });
}

void expectCheap(Bench& bench, const std::string& when)
{
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds cheap(1);
    constexpr int attempts = 20;

    bench.begin("the time of findControl() " + when);
    for (const sdk::Key key : absentKeys(bench)) {
        auto fastest = Clock::duration::max();
        for (int attempt = 0; attempt < attempts && fastest > cheap; ++attempt) { // the machine may be busy
            const auto start = Clock::now();
            bench.instrument()->findControl(key);
            fastest = std::min(fastest, Clock::now() - start);
        }
        if (fastest > cheap)
            throw Finding("findControl() takes more than 1 ms " + when);
    }
}

} // namespace

Seen givesExactlyTheInterface(Bench& bench)
{
    Tally tally;
    for (const devices::ControlName& control : bench.offered()) {
        const auto found = bench.instrument()->findControl(control.keys.sdk);
        if (!found)
            continue;
        bench.begin("the type of " + named(control));
        switch (exactness(control, found.get())) {
        case Exactness::Exact:
            tally.looked(named(control));
            break;
        case Exactness::Different:
            throw Finding("what findControl() gives for " + named(control)
                          + " does not point to the interface of that key");
        case Exactness::Unknown:
            tally.leftOut(NotApplicable("does not tell its type", named(control)));
            break;
        }
    }
    return tally.seen();
}

Seen givesNothingForWhatIsNotThere(Bench& bench)
{
    const auto offered = bench.offered();
    for (const sdk::Key key : unknownKeys(bench))
        if (bench.instrument()->findControl(key))
            throw Finding("findControl() gives something for the key " + std::to_string(key.value)
                          + ", which no control has");
    Tally tally;
    tally.looked("keys that no control has");
    lookOnManyThreads(bench, offered);
    tally.looked("eight threads");
    tally.attempt("inside notifications",
                  [&] { tally.looked("inside notifications of", lookWhenTold(bench, offered)); });
    tally.attempt("release and offer", [&] {
        {
            const Released released(bench);
            for (const devices::ControlName& control : offered)
                expectNothing(bench, control, "after it was released");
        }
        for (const devices::ControlName& control : offered)
            if (!bench.waitUntil([&] { return bench.instrument()->findControl(control.keys.sdk) != nullptr; }))
                throw Finding("findControl() does not give " + named(control) + " after it was offered again");
        tally.looked("release and offer");
    });
    return tally.seen();
}

Seen doesNotThrow(Bench& bench)
{
    const auto look = [&](const std::string& when) {
        bench.begin("findControl() " + when);
        try {
            for (const sdk::Key key : absentKeys(bench))
                bench.instrument()->findControl(key);
        } catch (const std::exception& error) {
            throw Finding("findControl() throws " + when + ": " + error.what());
        }
    };
    Tally tally;
    look("when there is nothing");
    tally.looked("keys that no control has, controls that the instrument lacks");
    tally.attempt("released controls", [&] {
        const Released released(bench);
        look("after the controls were released");
        tally.looked("released controls");
    });
    return tally.seen();
}

Seen isCheapWhenThereIsNothing(Bench& bench)
{
    Tally tally;
    expectCheap(bench, "when there is nothing");
    tally.looked("keys that no control has, controls that the instrument lacks");
    tally.attempt("released controls", [&] {
        const Released released(bench);
        expectCheap(bench, "after the controls were released");
        tally.looked("released controls");
    });
    return tally.seen();
}

} // namespace tov::conformance::lookup

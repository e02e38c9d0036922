#include "conformance/bench/bench.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <thread>
#include <utility>

namespace tov::conformance {

namespace controls = devices::controls;
using provider::Result;

namespace {

const char* toDo(Bench::Ability ability)
{
    switch (ability) {
    case Bench::Ability::ReleaseAndOffer:
        return "release and offer the controls";
    case Bench::Ability::Notify:
        return "cause notifications";
    case Bench::Ability::Answer:
        return "choose how an operation answers";
    case Bench::Ability::PassTime:
        return "let time pass";
    case Bench::Ability::WaitUntilQuiet:
        break;
    }
    return "wait until it is quiet";
}

void orNotApplicable(const Result<void>& done, const std::string& what = {})
{
    if (!done)
        throw NotApplicable(done.error().toStdString(), what);
}

} // namespace

Bench::Bench(std::unique_ptr<provider::IConnection> connection, const Settings& settings, IProgress& progress)
    : m_settings(settings)
    , m_progress(progress)
    , m_random(settings.seed)
    , m_connection(std::move(connection))
    , m_instrument(m_connection->instrument())
    , m_hooks(m_connection->testHooks())
    , m_abilities(m_hooks != nullptr ? m_hooks->abilities() : std::vector<Ability>())
{
    m_connection->setListener(this);
}

void Bench::begin(const std::string& what) const
{
    if (std::this_thread::get_id() == m_owner)
        m_progress.begin(what);
}

void Bench::passIfTerminated(const std::string& operation) const
{
    static IProgress* told = nullptr;
    static std::string passed;
    told = &m_progress;
    passed = operation;
    std::set_terminate([] {
        told->endAfter(passed);
        std::abort();
    });
}

Bench::~Bench()
{
    close();
}

void Bench::close()
{
    if (!m_connection)
        return;
    begin("the instrument is closed");
    m_connection->setListener(nullptr);
    m_connection.reset();
}

std::vector<devices::ControlName> Bench::offered()
{
    std::vector<devices::ControlName> found;
    for (const devices::ControlName& each : controls::all)
        if (!m_settings.only || *m_settings.only == each) {
            begin("findControl() for " + named(each));
            if (m_instrument->findControl(each.keys.sdk))
                found.push_back(each);
        }
    std::ranges::shuffle(found, m_random);
    return found;
}

bool Bench::waitUntil(const std::function<bool()>& happened, std::optional<std::chrono::milliseconds> patience) const
{
    const auto deadline = std::chrono::steady_clock::now() + patience.value_or(m_settings.timeout);
    while (!happened()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        QCoreApplication::processEvents();
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    return true;
}

void Bench::settle()
{
    constexpr std::chrono::milliseconds forMore(50); // of which the provider does not know
    constexpr std::chrono::milliseconds forAll(300);
    const bool canWait = can(Ability::WaitUntilQuiet);
    if (canWait) {
        const std::lock_guard guard(m_hooksMutex);
        orNotApplicable(m_hooks->waitUntilQuiet());
    }
    waitUntil([] { return false; }, canWait ? forMore : forAll);
}

std::shared_ptr<void> Bench::held(const devices::ControlName& control) const
{
    auto found = m_instrument->findControl(control.keys.sdk);
    if (!found)
        throw NotApplicable("is no longer offered", named(control));
    return found;
}

bool Bench::can(Ability ability) const
{
    return std::ranges::find(m_abilities, ability) != m_abilities.end();
}

void Bench::needs(Ability ability) const
{
    if (!can(ability))
        throw NotApplicable(std::string("the provider has no test hook to ") + toDo(ability));
}

void Bench::releaseControls()
{
    needs(Ability::ReleaseAndOffer);
    const std::lock_guard guard(m_hooksMutex);
    orNotApplicable(m_hooks->releaseControls());
}

void Bench::offerControls()
{
    needs(Ability::ReleaseAndOffer);
    const std::lock_guard guard(m_hooksMutex);
    orNotApplicable(m_hooks->offerControls());
}

void Bench::setAnswer(const devices::ControlName& control, const std::string& operation, Answer answer)
{
    needs(Ability::Answer);
    const std::lock_guard guard(m_hooksMutex);
    orNotApplicable(m_hooks->setAnswer(control.keys.sdk, QString::fromStdString(operation), answer), named(control));
}

void Bench::notify(const devices::ControlName& control)
{
    needs(Ability::Notify);
    const std::lock_guard guard(m_hooksMutex);
    orNotApplicable(m_hooks->notify(control.keys.sdk), named(control));
}

Released::Released(Bench& bench)
    : m_bench(bench)
{
    m_bench.begin("the controls are released");
    m_bench.releaseControls();
    m_bench.waitUntil([&] {
        return std::ranges::none_of(controls::all, [&](const devices::ControlName& each) {
            return m_bench.instrument()->findControl(each.keys.sdk) != nullptr;
        });
    });
}

Released::~Released()
try {
    m_bench.begin("the controls are offered");
    m_bench.offerControls();
} catch (const std::exception&) {
    return; // what needs them sees that they are not there
}

} // namespace tov::conformance

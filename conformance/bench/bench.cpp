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
        if (!m_settings.only || m_settings.only->keys.sdk == each.keys.sdk) {
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
        orNotApplicable(m_connection->testHooks()->waitUntilQuiet());
    }
    waitUntil([] { return false; }, canWait ? forMore : forAll);
}

bool Bench::can(Ability ability) const
{
    provider::ITestHooks* const hooks = m_connection->testHooks();
    if (hooks == nullptr)
        return false;
    const auto abilities = hooks->abilities();
    return std::ranges::find(abilities, ability) != abilities.end();
}

provider::ITestHooks& Bench::hooksFor(Ability ability)
{
    if (!can(ability))
        throw NotApplicable(std::string("the provider has no test hook to ") + toDo(ability));
    return *m_connection->testHooks();
}

void Bench::releaseControls()
{
    const std::lock_guard guard(m_hooksMutex);
    orNotApplicable(hooksFor(Ability::ReleaseAndOffer).releaseControls());
}

void Bench::offerControls()
{
    const std::lock_guard guard(m_hooksMutex);
    orNotApplicable(hooksFor(Ability::ReleaseAndOffer).offerControls());
}

void Bench::setAnswer(const devices::ControlName& control, const std::string& operation, Answer answer)
{
    const std::lock_guard guard(m_hooksMutex);
    orNotApplicable(hooksFor(Ability::Answer).setAnswer(control.keys.sdk, QString::fromStdString(operation), answer),
                    named(control));
}

void Bench::notify(const devices::ControlName& control)
{
    const std::lock_guard guard(m_hooksMutex);
    orNotApplicable(hooksFor(Ability::Notify).notify(control.keys.sdk), named(control));
}

} // namespace tov::conformance

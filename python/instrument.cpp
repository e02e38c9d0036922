#include "python/instrument.h"

#include "host/withoutexceptions.h"

#include <QScopeGuard>

#include <algorithm>
#include <exception>
#include <functional>
#include <ranges>

namespace tov::python {

using host::withoutExceptions;
using provider::ITestHooks;

namespace {

// Of all that were opened; guarded by the interpreter's lock.
std::vector<std::weak_ptr<Instrument>>& opened()
{
    static std::vector<std::weak_ptr<Instrument>> all;
    return all;
}

// Providers are called one at a time.
std::mutex& openingMutex()
{
    static std::mutex mutex;
    return mutex;
}

template <typename Element>
void remember(std::vector<std::weak_ptr<Element>>& all, const std::shared_ptr<Element>& one)
{
    std::erase_if(all, [](const auto& each) { return each.expired(); });
    all.push_back(one);
}

constexpr auto closing = "While an instrument was closed";

} // namespace

/// The connection that was opened, which has the session's thread pass on what is told.
class Instrument::Connection final : public provider::IConnection, public provider::IControlsListener
{
public:
    Connection(std::unique_ptr<provider::IConnection> opened, const SessionThread& thread,
               const std::shared_ptr<Held>& held)
        : m_opened(std::move(opened))
        , m_post(thread.poster())
        , m_held(held)
    {
    }

    std::shared_ptr<sdk::IVna> instrument() override { return m_opened->instrument(); }
    provider::Result<void> keep() override { return m_opened->keep(); }
    ITestHooks* testHooks() override { return m_opened->testHooks(); }

    void setListener(provider::IControlsListener* listener) override
    {
        if (listener == nullptr)
            m_opened->setListener(nullptr);
        m_listener = listener;
        if (listener != nullptr)
            m_opened->setListener(this);
    }

    void onControlsAboutToBeReleased(std::shared_ptr<void> hold) override
    {
        m_listener->onControlsAboutToBeReleased(std::move(hold));
        passOn();
    }

    void onControlsOffered() override
    {
        m_listener->onControlsOffered();
        passOn();
    }

private:
    void passOn()
    {
        m_post([weak = m_held] {
            const auto held = weak.lock();
            if (!held || !held->session)
                return;
            withoutExceptions("While an instrument's controls went or came", [&] { held->session->passOnNotices(); });
        });
    }

    std::unique_ptr<provider::IConnection> m_opened;
    provider::IControlsListener* m_listener = nullptr; // set before anybody tells
    // Not the thread, which is gone before this where it was left to itself.
    std::function<void(std::function<void()>)> m_post;
    std::weak_ptr<Held> m_held;
};

// Observers go first: some adapters let the session's end alone detach them.
void Instrument::Held::close()
{
    std::exception_ptr thrown;
    for (const auto& attachment : attachments | std::views::values) {
        try {
            attachment->detach();
        } catch (...) {
            thrown = std::current_exception();
        }
    }
    session.reset();
    if (thrown)
        std::rethrow_exception(thrown);
}

Instrument::Instrument() = default;

std::shared_ptr<Instrument> Instrument::open(const host::ProviderChoice& choice, bool strict)
{
    refuseInCallback();
    const std::shared_ptr<Instrument> instrument(new Instrument);
    instrument->m_strict = strict;
    withoutTheLock([&] { instrument->m_thread->call([&] { instrument->openInSession(choice); }); });
    python::remember(opened(), instrument);
    return instrument;
}

std::vector<provider::InstrumentDescription> Instrument::find(const host::ProviderDescription& provider)
{
    const std::lock_guard guard(openingMutex());
    return valueOf(host::findInstruments(provider));
}

void Instrument::openInSession(const host::ProviderChoice& choice)
{
    const std::lock_guard guard(openingMutex());
    host::OpenInstrument open = valueOf(host::openInstrument(choice));
    m_description = std::move(open.description);
    m_provider = choice.provider;
    m_vna = open.connection->instrument();
    m_held->session = asFailure([&] {
        return std::make_unique<host::InstrumentSession>(
            std::make_unique<Connection>(std::move(open.connection), *m_thread, m_held));
    });
}

Instrument::~Instrument()
{
    endSubscriptions();
    auto close = [held = std::move(m_held)]() mutable {
        withoutExceptions(closing, [&] { held->close(); });
        held.reset(); // and with it the adapters, in their own thread
    };
    if (isInCallback()) {
        m_thread->post(std::move(close));
        m_thread->leaveToItself();
    } else {
        withoutTheLock([&] {
            m_thread->post(std::move(close));
            m_thread.reset();
        });
    }
}

void Instrument::close()
{
    refuseInCallback();
    if (m_closed.exchange(true))
        return;
    const auto ending = qScopeGuard([this] { endSubscriptions(); });
    withoutTheLock([this] { m_thread->call([this] { asFailure([this] { m_held->close(); }); }); });
}

void Instrument::closeAll()
{
    for (const auto& each : std::exchange(opened(), {})) {
        if (const auto instrument = each.lock())
            withoutExceptions(closing, [&] { instrument->close(); });
    }
}

void Instrument::endSubscriptions()
{
    for (const auto& each : std::exchange(m_subscribers, {}))
        if (const auto subscriber = each.lock())
            subscriber->close();
}

Subscription Instrument::remember(Subscription subscription)
{
    python::remember(m_subscribers, subscription.subscriber());
    return subscription;
}

std::shared_ptr<Attachment> Instrument::findAttached(std::uint64_t key) const
{
    const std::lock_guard guard(m_held->mutex);
    const auto found = m_held->attachments.find(key);
    return found != m_held->attachments.end() ? found->second : nullptr;
}

std::shared_ptr<Attachment> Instrument::keepAttached(std::uint64_t key, std::shared_ptr<Attachment> attachment)
{
    const std::lock_guard guard(m_held->mutex);
    return m_held->attachments.emplace(key, std::move(attachment)).first->second;
}

void Instrument::refuseWhenClosed() const
{
    if (m_closed)
        throw py::value_error("the instrument is closed");
}

void Instrument::keep()
{
    inSession([](host::InstrumentSession& session) { valueOf(session.connection()->keep()); });
}

std::vector<ITestHooks::Ability> Instrument::abilities()
{
    return inSession([](host::InstrumentSession& session) {
        const ITestHooks* const hooks = session.connection()->testHooks();
        return hooks != nullptr ? hooks->abilities() : std::vector<ITestHooks::Ability>();
    });
}

void Instrument::settle(host::InstrumentSession& session, ITestHooks& hooks)
{
    if (std::ranges::count(hooks.abilities(), ITestHooks::Ability::WaitUntilQuiet) != 0)
        valueOf(hooks.waitUntilQuiet());
    session.passOnNotices();
}

} // namespace tov::python

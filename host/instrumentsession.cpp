#include "host/instrumentsession.h"

#include "host/withoutexceptions.h"
#include "service/servicecontrols.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QScopedValueRollback>

#include <algorithm>
#include <deque>
#include <exception>
#include <limits>
#include <mutex>
#include <optional>
#include <ranges>
#include <string>
#include <thread>
#include <utility>

namespace tov::host {

namespace {

/// Does one thing after the other, whatever they throw; of that the first is thrown at the end.
class OneAfterTheOther
{
public:
    template <typename Thing>
    void attempt(Thing thing)
    {
        try {
            thing();
        } catch (...) {
            if (!m_thrown)
                m_thrown = std::current_exception();
        }
    }

    void finish() const
    {
        if (m_thrown)
            std::rethrow_exception(m_thrown);
    }

private:
    std::exception_ptr m_thrown;
};

} // namespace

/// What a connection tells, on its way to the owner's thread, where this object is. What is told there already is
/// passed on at once.
class InstrumentSession::Notices final : public QObject, public provider::IControlsListener
{
public:
    explicit Notices(InstrumentSession& session)
        : m_session(session)
    {
        m_session.m_connection->setListener(this);
    }
    Notices(const Notices&) = delete;
    Notices& operator=(const Notices&) = delete;
    ~Notices() override = default;

    void onControlsAboutToBeReleased(std::shared_ptr<void> hold) override
    {
        passOn({.tell = &InstrumentSession::tellOfRelease, .hold = std::move(hold)});
    }

    void onControlsOffered() override { passOn({.tell = &InstrumentSession::tellOfOffer, .hold = nullptr}); }

    // In the owner's thread. What is told while an adapter hears of something comes after that.
    void passOnWaiting()
    {
        if (m_passingOn)
            return;
        const QScopedValueRollback passingOn(m_passingOn, true);
        try {
            while (const auto notice = takeNext())
                (m_session.*notice->tell)();
        } catch (...) {
            wakeOwner(); // for what still waits
            throw;
        }
    }

private:
    struct Notice
    {
        void (InstrumentSession::*tell)();
        std::shared_ptr<void> hold; // let go of when it was told
    };

    void passOn(Notice notice)
    {
        {
            const std::lock_guard guard(m_mutex);
            m_waiting.push_back(std::move(notice));
        }
        if (std::this_thread::get_id() == m_owner)
            passOnWaiting();
        else
            wakeOwner();
    }

    void wakeOwner() { QCoreApplication::postEvent(this, std::make_unique<QEvent>(QEvent::User).release()); }

    // Called by the event loop, which bears no exceptions.
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        withoutExceptions("While an instrument's controls went or came", [this] { passOnWaiting(); });
        return true;
    }

    std::optional<Notice> takeNext()
    {
        const std::lock_guard guard(m_mutex);
        if (m_waiting.empty())
            return std::nullopt;
        std::optional<Notice> next(std::move(m_waiting.front()));
        m_waiting.pop_front();
        return next;
    }

    InstrumentSession& m_session;
    const std::thread::id m_owner = std::this_thread::get_id();
    bool m_passingOn = false;

    std::mutex m_mutex; // guards m_waiting
    std::deque<Notice> m_waiting;
};

devices::ControlRegistry registeredControls()
{
    devices::ControlRegistry registry;
    devices::service::servicecontrols::registrate(&registry);
    return registry;
}

ControlAbsent::ControlAbsent(const ControlName& kind)
    : std::runtime_error("the instrument has no " + std::string(kind.name) + " control")
{
}

InstrumentSession::InstrumentSession(std::shared_ptr<sdk::IVna> instrument)
    : InstrumentSession(std::move(instrument), registeredControls())
{
}

InstrumentSession::InstrumentSession(std::shared_ptr<sdk::IVna> instrument, devices::ControlRegistry registry)
    : m_instrument(std::move(instrument))
    , m_registry(std::move(registry))
{
}

InstrumentSession::InstrumentSession(std::unique_ptr<provider::IConnection> connection,
                                     devices::ControlRegistry registry)
    : m_connection(std::move(connection))
    , m_instrument(m_connection->instrument())
    , m_registry(std::move(registry))
    , m_notices(std::make_unique<Notices>(*this))
{
}

InstrumentSession::~InstrumentSession()
{
    m_calls.clear();
    m_calls.waitForDone();

    constexpr auto closing = "While an instrument was closed";
    if (!m_connection)
        return;
    withoutExceptions(closing, [this] { m_connection->setListener(nullptr); });
    withoutExceptions(closing, [this] { tellOfRelease(); });
}

void InstrumentSession::passOnNotices()
{
    if (m_notices)
        m_notices->passOnWaiting();
}

bool InstrumentSession::waitForCalls(std::chrono::milliseconds patience)
{
    using std::chrono::milliseconds;
    constexpr milliseconds withoutLimit(-1);
    constexpr milliseconds most(std::numeric_limits<int>::max());
    return m_calls.waitForDone(static_cast<int>(std::clamp(patience, withoutLimit, most).count()));
}

bool InstrumentSession::isPresent(const ControlName& kind) const
{
    return m_instrument->findControl(kind.keys.sdk) != nullptr;
}

void InstrumentSession::releaseControls(const std::function<void()>& release)
{
    for (auto* observer : lifecycleObservers() | std::views::reverse)
        observer->onControlsAboutToBeReleased();
    release();
}

void InstrumentSession::offerControls(const std::function<void()>& offer)
{
    offer();
    for (auto* observer : lifecycleObservers())
        observer->onControlsAvailable();
}

void InstrumentSession::letAdaptersGo()
{
    OneAfterTheOther tellings;
    for (auto* observer : lifecycleObservers() | std::views::reverse)
        tellings.attempt([=] { observer->onControlsAboutToBeReleased(); });
    tellings.finish();
}

void InstrumentSession::tellOfRelease()
{
    if (!std::exchange(m_released, true))
        letAdaptersGo();
}

void InstrumentSession::tellOfOffer()
{
    OneAfterTheOther tellings;
    // Also to those who have heard already: what was attached since, or could not be detached from controls that were
    // gone by then, takes itself for attached.
    tellings.attempt([this] { letAdaptersGo(); });
    m_released = false;
    for (auto* observer : lifecycleObservers())
        tellings.attempt([=] { observer->onControlsAvailable(); });
    tellings.finish();
}

std::any InstrumentSession::create(const devices::ControlKeys& keys) const
{
    return m_registry.create(keys.registry, m_instrument.get());
}

const InstrumentSession::Kept* InstrumentSession::findKept(std::uint64_t key) const
{
    const auto kept = std::ranges::find(m_kept, key, &Kept::key);
    return kept != m_kept.end() ? &*kept : nullptr;
}

// A copy, because an adapter that is told may ask the session for another one.
std::vector<devices::IControlLifecycleObserver*> InstrumentSession::lifecycleObservers() const
{
    std::vector<devices::IControlLifecycleObserver*> observers;
    for (const Kept& kept : m_kept)
        if (kept.lifecycle != nullptr)
            observers.push_back(kept.lifecycle);
    return observers;
}

} // namespace tov::host

#pragma once

#include "devices/controlregistry.h"
#include "devices/icontrollifecycleobserver.h"
#include "host/controls.h"
#include "provider/iconnection.h"
#include "sdk/ivna.h"

#include <QFuture>
#include <QPromise>
#include <QThreadPool>

#include <any>
#include <chrono>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

namespace tov::host {

/// A registry that holds what the library registers.
devices::ControlRegistry registeredControls();

/// The instrument does not have the control that a call was to be made on.
class ControlAbsent : public std::runtime_error
{
public:
    /// Names `kind` in words.
    explicit ControlAbsent(const ControlName& kind);
};

/// An open instrument and the adapters that a host program uses on it.
///
/// Registers the library, creates adapters on demand and keeps them, and tells them when the
/// instrument's controls go and come. Every adapter that is handed out keeps the instrument alive, so
/// it may be kept longer than the session.
///
/// Thread: *owner's thread* for the session, which is that of its constructor; the adapters have their own rules.
class InstrumentSession
{
public:
    /// Opens a session on `instrument`, which must not be null. Whoever knows when its controls go and come says so by
    /// `releaseControls()` and `offerControls()`.
    explicit InstrumentSession(std::shared_ptr<sdk::IVna> instrument);

    /// The same with a registry of the host's own, for one that registers more than this library.
    InstrumentSession(std::shared_ptr<sdk::IVna> instrument, devices::ControlRegistry registry);

    /// Opens a session on what a provider has opened, which must not be null; the session ends with closing it. What
    /// the provider tells of the controls, on whatever thread, is passed on to the adapters in the owner's thread: by
    /// its event loop, or by `passOnNotices()`. The controls stay until the adapters have heard that they go. If they
    /// went without a word, the adapters hear of both when they are offered again.
    explicit InstrumentSession(std::unique_ptr<provider::IConnection> connection,
                               devices::ControlRegistry registry = registeredControls());

    InstrumentSession(const InstrumentSession&) = delete;
    InstrumentSession& operator=(const InstrumentSession&) = delete;

    /// Takes back the calls that have not begun, waits for the one that is under way, and on a connection tells the
    /// adapters that the controls go, and closes it. Not inside such a call, which would wait for itself.
    ~InstrumentSession();

    /// The connection that the session is on; null when there is none.
    provider::IConnection* connection() const noexcept { return m_connection.get(); }

    /// Passes on what the connection has told, for an owner's thread that has no event loop. What an adapter throws
    /// comes when all have heard; what was told later waits for the next call. An event loop warns of it instead.
    void passOnNotices();

    /// The adapter of this kind: always the same one, created at the first demand. Null when the
    /// instrument does not have the control; the next demand asks again.
    ///
    /// Throws `std::out_of_range` when the kind is not registered.
    template <typename Exposed>
    std::shared_ptr<Exposed> control(const Control<Exposed>& kind);

    /// Calls `function`, which must be copyable, with the adapter of this kind on a thread of the session's own, one
    /// call after the other in the order in which they were asked for, and returns at once: a call may take as long as
    /// the instrument likes.
    ///
    /// The future gives what `function` returns, or throws what it throws; `ControlAbsent` when `control()` gives null.
    /// Cancelling it takes a call back that has not begun; one that has goes on, and its answer is lost.
    ///
    /// Throws what `control()` throws.
    template <typename Exposed, typename Function>
    auto run(const Control<Exposed>& kind, Function function) -> QFuture<std::invoke_result_t<Function&, Exposed&>>;

    /// Whether all that was asked for by `run()` is done; for that this waits so long, and without a limit when the
    /// time is negative. Not inside such a call.
    bool waitForCalls(std::chrono::milliseconds patience = std::chrono::milliseconds(-1));

    /// Whether the instrument offers the control now; creates nothing. Thread: *any thread*.
    bool isPresent(const ControlName& kind) const;

    /// What is registered.
    const devices::ControlRegistry& registry() const noexcept { return m_registry; }

    /// Releases the instrument's controls by `release`, after the adapters were told of it, the newest
    /// first: they let go of the old controls while those still live.
    ///
    /// What `release` or an adapter throws passes through; the adapters that come after it are not told.
    void releaseControls(const std::function<void()>& release);

    /// Makes the instrument offer its controls by `offer` and tells the adapters, the oldest first:
    /// they find the new controls when they are told.
    ///
    /// What `offer` or an adapter throws passes through; the adapters that come after it are not told.
    void offerControls(const std::function<void()>& offer);

private:
    class Notices;

    struct OneThread : QThreadPool
    {
        OneThread() { setMaxThreadCount(1); }
    };

    struct Kept
    {
        std::uint64_t key;
        std::any control; // a std::shared_ptr of the type that the registry hands out
        devices::IControlLifecycleObserver* lifecycle;
    };

    std::any create(const devices::ControlKeys& keys) const;
    const Kept* findKept(std::uint64_t key) const;
    std::vector<devices::IControlLifecycleObserver*> lifecycleObservers() const;
    void letAdaptersGo();
    void tellOfRelease();
    void tellOfOffer();

    template <typename Exposed>
    std::shared_ptr<Exposed> keepInstrumentAlive(std::shared_ptr<Exposed> adapter) const;

    std::unique_ptr<provider::IConnection> m_connection;
    std::shared_ptr<sdk::IVna> m_instrument;
    devices::ControlRegistry m_registry;
    std::vector<Kept> m_kept;
    bool m_released = false;            // the adapters have heard that the controls of the connection go
    std::unique_ptr<Notices> m_notices; // those that wait hold the controls until the adapters have heard
    OneThread m_calls;
};

template <typename Exposed>
std::shared_ptr<Exposed> InstrumentSession::control(const Control<Exposed>& kind)
{
    if (const Kept* kept = findKept(kind.keys.registry))
        return std::any_cast<std::shared_ptr<Exposed>>(kept->control);

    const std::any created = create(kind.keys);
    if (!created.has_value())
        return nullptr;

    auto adapter = keepInstrumentAlive(std::any_cast<std::shared_ptr<Exposed>>(created));
    devices::IControlLifecycleObserver* lifecycle = nullptr;
    if constexpr (std::is_polymorphic_v<Exposed>)
        lifecycle = dynamic_cast<devices::IControlLifecycleObserver*>(adapter.get());
    m_kept.push_back({kind.keys.registry, adapter, lifecycle});
    return adapter;
}

template <typename Exposed, typename Function>
auto InstrumentSession::run(const Control<Exposed>& kind, Function function)
    -> QFuture<std::invoke_result_t<Function&, Exposed&>>
{
    using Result = std::invoke_result_t<Function&, Exposed&>;

    const auto promise = std::make_shared<QPromise<Result>>();
    promise->start(); // already here: who waits for the future waits for the call's turn too
    auto call = [promise, function = std::move(function), adapter = control(kind),
                 name = static_cast<ControlName>(kind)]() mutable {
        if (promise->isCanceled())
            return promise->finish();
        try {
            if (!adapter)
                throw ControlAbsent(name);
            if constexpr (std::is_void_v<Result>)
                function(*adapter);
            else
                promise->addResult(function(*adapter));
        } catch (...) {
            promise->setException(std::current_exception());
        }
        promise->finish();
    };
    m_calls.start(std::move(call));
    return promise->future();
}

template <typename Exposed>
std::shared_ptr<Exposed> InstrumentSession::keepInstrumentAlive(std::shared_ptr<Exposed> adapter) const
{
    struct Held
    {
        std::shared_ptr<sdk::IVna> instrument;
        std::shared_ptr<Exposed> adapter; // last, so it is destroyed before the instrument
    };

    Exposed* const plain = adapter.get();
    auto held = std::make_shared<Held>(m_instrument, std::move(adapter));
    return {std::move(held), plain};
}

} // namespace tov::host

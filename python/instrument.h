#pragma once

#include "host/instrumentsession.h"
#include "host/providers.h"
#include "python/errors.h"
#include "python/relays.h"
#include "python/sessionthread.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace tov::python {

/// An adapter that a script has asked for, and what observes it.
class Attachment
{
public:
    Attachment() = default;
    Attachment(const Attachment&) = delete;
    Attachment& operator=(const Attachment&) = delete;
    virtual ~Attachment() = default;

    /// Observes the adapter no more.
    virtual void detach() = 0;
};

template <typename Adapter>
class Attached final : public Attachment
{
public:
    explicit Attached(std::shared_ptr<Adapter> attachedTo)
        : adapter(std::move(attachedTo))
    {
        relay.attach(*adapter);
    }

    void detach() override { relay.detach(*adapter); }

    Relay<Adapter> relay; // before the adapter, which may tell it until it is destroyed
    std::shared_ptr<Adapter> adapter;
};

/// An open instrument. Its session is owned by a thread of its own, which passes on at once what the provider tells of
/// the controls.
///
/// Thread: *any thread* with the interpreter's lock, which is let go of while one waits.
class Instrument : public std::enable_shared_from_this<Instrument>
{
public:
    /// Opens what is chosen; a strict one raises `ControlAbsent` where a control is absent in a call, not only when it
    /// is asked for. Throws `OperationFailed`.
    static std::shared_ptr<Instrument> open(const host::ProviderChoice& choice, bool strict);

    /// The instruments of a provider, without the interpreter's lock. Throws `OperationFailed`.
    static std::vector<provider::InstrumentDescription> find(const host::ProviderDescription& provider);

    Instrument(const Instrument&) = delete;
    Instrument& operator=(const Instrument&) = delete;

    /// Closes it.
    ~Instrument();

    /// Closes it, and waits for that. Subscriptions end, and its controls are absent from then on.
    void close();
    bool isClosed() const { return m_closed; }

    /// Throws a ValueError once it is closed.
    void refuseWhenClosed() const;

    /// The instruments that are still open, at the end of the interpreter.
    static void closeAll();

    const provider::InstrumentDescription& description() const { return m_description; }
    const host::ProviderDescription& provider() const { return m_provider; }

    bool isStrict() const { return m_strict; }
    void setStrict(bool strict) { m_strict = strict; }

    /// Whether the instrument offers the control now. Without the interpreter's lock.
    bool offers(const host::ControlName& kind) const { return m_vna->findControl(kind.keys.sdk) != nullptr; }

    /// Throws `host::ControlAbsent` when the instrument lacks the control.
    template <typename Adapter>
    std::shared_ptr<Attached<Adapter>> attached(const host::Control<Adapter>& kind)
    {
        refuseWhenClosed();
        if (auto found = findAttached(kind.keys.registry))
            return std::static_pointer_cast<Attached<Adapter>>(std::move(found));
        auto made = inSession([&](host::InstrumentSession& session) -> std::shared_ptr<Attachment> {
            if (auto found = findAttached(kind.keys.registry)) // by another thread meanwhile
                return found;
            auto adapter = session.control(kind);
            return adapter ? keepAttached(kind.keys.registry, std::make_shared<Attached<Adapter>>(std::move(adapter)))
                           : nullptr;
        });
        if (!made)
            throw host::ControlAbsent(kind);
        return std::static_pointer_cast<Attached<Adapter>>(std::move(made));
    }

    /// Has the subscription end when the instrument is closed.
    Subscription remember(Subscription subscription);

    /// Makes what was changed lasting, where the provider does that.
    void keep();

    std::vector<provider::ITestHooks::Ability> abilities();

    /// Does something by the provider's test hooks, and waits until the instrument is quiet and everybody has heard.
    /// Throws `OperationFailed`, also where the provider has none.
    template <typename Call>
    void byHooks(Call call)
    {
        inSession([&](host::InstrumentSession& session) {
            provider::ITestHooks* const hooks = session.connection()->testHooks();
            if (hooks == nullptr)
                throw OperationFailed("this provider has no test hooks");
            valueOf(call(*hooks));
            settle(session, *hooks);
        });
    }

private:
    /// What lives in the thread of the session.
    struct Held
    {
        std::unique_ptr<host::InstrumentSession> session; // of that thread alone; null once it is closed
        std::mutex mutex;                                 // guards the attachments
        std::map<std::uint64_t, std::shared_ptr<Attachment>> attachments;

        void close();
    };
    class Connection;

    Instrument();
    void openInSession(const host::ProviderChoice& choice);
    std::shared_ptr<Attachment> findAttached(std::uint64_t key) const;
    std::shared_ptr<Attachment> keepAttached(std::uint64_t key, std::shared_ptr<Attachment> attachment);
    void endSubscriptions();
    static void settle(host::InstrumentSession& session, provider::ITestHooks& hooks);

    template <typename Call>
    auto inSession(Call call)
    {
        refuseInCallback();
        return withoutTheLock([&] {
            return m_thread->call([&] {
                if (!m_held->session)
                    refuseWhenClosed();
                return asFailure([&] { return call(*m_held->session); });
            });
        });
    }

    provider::InstrumentDescription m_description;
    host::ProviderDescription m_provider;
    std::shared_ptr<sdk::IVna> m_vna;
    std::atomic<bool> m_strict = false;
    std::atomic<bool> m_closed = false;
    std::vector<std::weak_ptr<Subscriber>> m_subscribers; // guarded by the interpreter's lock
    std::shared_ptr<Held> m_held = std::make_shared<Held>();
    std::unique_ptr<SessionThread> m_thread = std::make_unique<SessionThread>();
};

} // namespace tov::python

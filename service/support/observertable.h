#pragma once

#include "devices/reacquiringcontrol.h"

#include <memory>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tov::devices::service {

/// An `Adapter`, which observes the SDK for one observer, with what an `ObserverTable` knows of its registration.
template <typename Adapter>
struct Registration : Adapter
{
    using Adapter::Adapter;

    bool attached = true;   // the SDK has it, as far as the table knows, or is about to
    int underWay = 0;       // calls to the SDK for it
    std::thread::id caller; // who makes these, or the first of them, or made the last
    bool uncertain = false; // several threads make them: what they bring about together is not known
    bool isNew = true;      // nothing was announced since it was added
};

/// The application's observers of one control, not owned, each with a `Registration` that observes the SDK for it. One
/// that came twice is told once. This is the way to work with the `entries`; it keeps nothing itself.
///
/// A registration is made of its observer; its operation silence() keeps it from telling, and isSilent() says so.
///
/// Thread: *any thread*. The SDK is never called under the lock, so it may call back at any time, and nobody waits.
/// Without a race there is one call to the SDK for each change. Where calls of several threads for one registration
/// overlapped, each takes back what it registered, and the last one to return registers anew if the table says so:
/// what is put right so can overlap with new calls only, and is then put right by the last of these.
template <typename SdkControl, typename Observer, typename Registered>
class ObserverTable
{
public:
    /// How the SDK's control is reached.
    using Control = ReacquiringControl<SdkControl>;

    /// Registrations are shared with the calls that are under way for them.
    using Entries = std::unordered_map<Observer*, std::shared_ptr<Registered>>;

    /// Works with `entries`, which `mutex` guards.
    ObserverTable(const Control& control, std::mutex& mutex, Entries& entries)
        : m_control(control)
        , m_mutex(mutex)
        , m_entries(entries)
    {
    }

    /// Registers `observer`, now or when the controls are available; one that is registered already and a null
    /// pointer change nothing.
    void add(Observer* observer)
    {
        if (observer == nullptr)
            return;
        auto registration = std::make_shared<Registered>(observer);
        std::unique_lock lock(m_mutex);
        if (!m_entries.try_emplace(observer, registration).second)
            return;
        Call call(*this, std::move(registration));
        lock.unlock();
        call.attach(m_control.lock());
    }

    /// `observer` is not told any more once this has returned or thrown.
    void remove(Observer* observer)
    {
        std::unique_lock lock(m_mutex);
        const auto found = m_entries.find(observer);
        if (found == m_entries.end())
            return;
        const auto entry = m_entries.extract(found); // keeps the registration until the SDK has let go of it
        Registered& registration = *entry.mapped();
        registration.attached = false;
        Call call(*this, entry.mapped());
        if (registration.uncertain) // the SDK may be given it after it was asked to let go of it
            registration.silence();
        lock.unlock();
        const Silencing silencing(registration);
        call.detach(m_control.lock());
    }

    /// Attaches everybody who is not.
    void attachAll() { changeAll(true, &Call::attach); }

    /// Detaches everybody who is attached, and keeps them.
    void detachAll() { changeAll(false, &Call::detach); }

private:
    using Locked = typename Control::Locked;

    struct Silencing
    {
        explicit Silencing(Registered& registration) noexcept
            : silenced(registration)
        {
        }
        Silencing(const Silencing&) = delete;
        Silencing& operator=(const Silencing&) = delete;
        ~Silencing() { silenced.silence(); }

        Registered& silenced;
    };

    /// A call to the SDK for one registration, from the decision in the table on. One that fails leaves the
    /// registration waiting for the controls.
    class Call
    {
    public:
        // Under the lock.
        Call(ObserverTable& table, std::shared_ptr<Registered> registration) noexcept
            : m_table(table)
            , m_registration(std::move(registration))
        {
            meet(*m_registration);
            if (m_registration->underWay++ == 0)
                takeOver();
        }
        Call(Call&&) noexcept = default;
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;
        Call& operator=(Call&&) = delete;
        ~Call()
        {
            if (!m_registration)
                return;
            const std::lock_guard guard(m_table.m_mutex);
            m_registration->attached = false;
            --m_registration->underWay;
        }

        // Under the lock: what is decided about `registration` meets the calls that other threads make for it.
        static void meet(Registered& registration) noexcept
        {
            if (registration.underWay > 0 && registration.caller != std::this_thread::get_id())
                registration.uncertain = true;
        }

        void attach(Locked locked)
        {
            for (;;) {
                if (m_registration->isSilent()) // removed before its turn came
                    locked = {};
                if (locked)
                    locked->addObserver(m_registration.get());
                if (endIfCertain(static_cast<bool>(locked)))
                    return;
                if (locked)
                    locked->removeObserver(m_registration.get());
                if (!mustAttach())
                    return;
                locked = m_table.m_control.lock();
            }
        }

        void detach(const Locked& locked)
        {
            if (locked)
                locked->removeObserver(m_registration.get());
            if (mustAttach())
                attach(m_table.m_control.lock());
        }

    private:
        void takeOver() noexcept
        {
            m_registration->caller = std::this_thread::get_id();
            m_registration->uncertain = false;
        }

        void end() noexcept
        {
            --m_registration->underWay;
            m_registration = nullptr;
        }

        bool endIfCertain(bool attached)
        {
            const std::lock_guard guard(m_table.m_mutex);
            if (m_registration->uncertain)
                return false;
            if (!attached)
                m_registration->attached = false;
            end();
            return true;
        }

        // Whether this call has to put right what calls that overlapped have left; otherwise it has ended.
        bool mustAttach()
        {
            const std::lock_guard guard(m_table.m_mutex);
            if (m_registration->uncertain && m_registration->underWay == 1) {
                takeOver();
                if (m_registration->attached)
                    return true;
            }
            end();
            return false;
        }

        ObserverTable& m_table;
        std::shared_ptr<Registered> m_registration;
    };

    void changeAll(bool attached, auto change)
    {
        const Locked locked = m_control.lock();
        if (!locked)
            return;
        for (auto calls = decide(attached, true); !calls.empty(); calls = decide(attached, false))
            for (Call& call : calls)
                (call.*change)(locked);
    }

    // Whom to change; when it is not the first time, of those that other threads have added meanwhile.
    std::vector<Call> decide(bool attached, bool first)
    {
        std::vector<Call> calls;
        const std::lock_guard guard(m_mutex);
        calls.reserve(m_entries.size());
        for (const auto& [observer, registration] : m_entries) {
            const bool isNew = std::exchange(registration->isNew, false);
            if (registration->attached == attached) {
                Call::meet(*registration);
            } else if (first || (isNew && registration->caller != std::this_thread::get_id())) {
                registration->attached = attached;
                calls.emplace_back(*this, registration);
            }
        }
        return calls;
    }

    const Control& m_control;
    std::mutex& m_mutex; // guards all below
    Entries& m_entries;
};

} // namespace tov::devices::service

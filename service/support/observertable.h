#pragma once

#include "devices/reacquiringcontrol.h"

#include <memory>
#include <mutex>
#include <new>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tov::devices::service {

/// The application's observers of one control, not owned, each with an `Adapter` that observes the SDK for it. One
/// that came twice is told once. The SDK is never called under the lock, so it may call back at any time.
///
/// An `Adapter` is made of its observer, and its operation tell(observer) changes whom it tells; a null pointer
/// silences it.
///
/// Thread: *any thread*. Only one thread at a time works on the registration of an adapter. What others want
/// meanwhile they write into the table, and the one that is at work brings it about before it returns; nobody waits.
/// An adapter that the SDK may hold, because it threw instead of letting go of it, is kept as long as the table.
template <typename SdkControl, typename Observer, typename Adapter>
class ObserverTable
{
public:
    /// How the SDK's control is reached; every operation is given the way to the same one.
    using Control = ReacquiringControl<SdkControl>;

    /// Registers `observer`, now or when the controls are available; one that is registered already and a null
    /// pointer change nothing.
    void add(const Control& control, Observer* observer);

    /// `observer` is not told any more once this has returned or thrown.
    void remove(const Control& control, Observer* observer);

    /// Attaches every adapter that is not.
    void attachAll(const Control& control);

    /// Detaches every adapter that is attached, and keeps it.
    void detachAll(const Control& control);

private:
    struct Registration final : Adapter
    {
        using Adapter::Adapter;

        bool atWork = false;    // a thread is calling the SDK for it, or will
        bool changed = false;   // others changed their mind meanwhile
        bool available = false; // the controls were announced meanwhile
        bool isNew = true;      // nothing was announced since it was added
        bool abandoned = false; // removed meanwhile: whoever is at work disposes of it
        bool lost = false;      // the SDK may hold it for ever

        std::unique_ptr<Registration> next; // lost one
    };

    struct Entry
    {
        std::unique_ptr<Registration> adapter;
        bool attached = false; // the SDK has it, as far as the table knows, or is about to
    };

    using Entries = std::unordered_map<Observer*, Entry>;

    /// What one thread does for one adapter, which is marked as at work.
    class Work
    {
    public:
        Work(ObserverTable& table, Observer* observer, Registration* adapter, bool registered) noexcept
            : m_table(table)
            , m_observer(observer)
            , m_adapter(adapter)
            , m_registered(registered)
        {
        }
        Work(Work&& other) noexcept
            : m_table(other.m_table)
            , m_observer(other.m_observer)
            , m_adapter(std::exchange(other.m_adapter, nullptr))
            , m_registered(other.m_registered)
        {
        }
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;
        Work& operator=(Work&&) = delete;
        ~Work()
        {
            if (m_adapter == nullptr)
                return;
            const std::lock_guard guard(m_table.m_mutex);
            end();
        }

        void attach(SdkControl& sdkControl)
        {
            m_registered = true;
            sdkControl.addObserver(m_adapter);
        }
        void detach(SdkControl& sdkControl)
        {
            sdkControl.removeObserver(m_adapter);
            m_registered = false;
        }

        /// Ends the work unless it does not fit any more.
        bool tryEnd()
        {
            const std::lock_guard guard(m_table.m_mutex);
            if (m_adapter->changed || (m_adapter->available && !m_registered))
                return false;
            end();
            return true;
        }

        /// Brings about what the table says; the SDK does not have the adapter.
        void settle(const Control& control)
        {
            while (mustAttach()) {
                const auto locked = control.lock();
                if (locked)
                    attach(*locked);
                if (tryEnd())
                    return;
                if (locked)
                    detach(*locked);
            }
        }

    private:
        // Null after the observer was removed, and also when it was then added anew.
        Entry* entry() const
        {
            const auto found = m_table.m_entries.find(m_observer);
            return found != m_table.m_entries.end() && found->second.adapter.get() == m_adapter ? &found->second
                                                                                                : nullptr;
        }

        bool mustAttach()
        {
            const std::lock_guard guard(m_table.m_mutex);
            m_adapter->changed = false;
            m_adapter->available = false;
            if (const Entry* const wanted = entry(); wanted != nullptr && wanted->attached)
                return true;
            end();
            return false;
        }

        // Under the lock.
        void end() noexcept
        {
            Entry* const ended = entry();
            Registration* const adapter = std::exchange(m_adapter, nullptr);
            adapter->atWork = false;
            adapter->changed = false;
            adapter->available = false;
            if (ended != nullptr) {
                // Otherwise it says what was wanted, also when the SDK threw.
                if (!m_registered)
                    ended->attached = false;
                return;
            }
            adapter->lost = adapter->lost || m_registered;
            if (adapter->abandoned)
                m_table.dispose(std::unique_ptr<Registration>(adapter));
        }

        ObserverTable& m_table;
        Observer* const m_observer;
        Registration* m_adapter;
        bool m_registered; // the SDK has it, or threw while it was given it
    };

    std::vector<Work> take(bool attached, bool onlyNew);
    void dispose(std::unique_ptr<Registration> adapter) noexcept;

    std::mutex m_mutex; // guards all below
    Entries m_entries;
};

template <typename SdkControl, typename Observer, typename Adapter>
void ObserverTable<SdkControl, Observer, Adapter>::add(const Control& control, Observer* observer)
{
    if (observer == nullptr)
        return;
    Registration* adapter = nullptr;
    {
        const std::lock_guard guard(m_mutex);
        if (m_entries.contains(observer))
            return;
        auto made = std::make_unique<Registration>(observer);
        adapter = made.get();
        adapter->atWork = true;
        m_entries.emplace(observer, Entry{std::move(made), true});
    }
    Work(*this, observer, adapter, false).settle(control);
}

template <typename SdkControl, typename Observer, typename Adapter>
void ObserverTable<SdkControl, Observer, Adapter>::remove(const Control& control, Observer* observer)
{
    if (observer == nullptr)
        return;
    std::unique_ptr<Registration> adapter;
    {
        const std::lock_guard guard(m_mutex);
        const auto found = m_entries.find(observer);
        if (found == m_entries.end())
            return;
        adapter = std::move(found->second.adapter);
        m_entries.erase(found);
        adapter->changed = true;
    }

    // Whatever the SDK does with it from now on, nobody is told.
    adapter->tell(nullptr);
    try {
        if (const auto locked = control.lock())
            locked->removeObserver(adapter.get());
    } catch (...) {
        const std::lock_guard guard(m_mutex);
        adapter->lost = true;
        dispose(std::move(adapter));
        throw;
    }

    const std::lock_guard guard(m_mutex);
    dispose(std::move(adapter));
}

template <typename SdkControl, typename Observer, typename Adapter>
void ObserverTable<SdkControl, Observer, Adapter>::attachAll(const Control& control)
{
    if (!control.lock())
        return;
    for (Work& work : take(true, false))
        work.settle(control);
}

template <typename SdkControl, typename Observer, typename Adapter>
void ObserverTable<SdkControl, Observer, Adapter>::detachAll(const Control& control)
{
    std::vector<Work> unsettled;
    if (const auto locked = control.lock()) {
        // Again for those that were added meanwhile.
        for (auto works = take(false, false); !works.empty(); works = take(false, true))
            for (Work& work : works) {
                work.detach(*locked);
                if (!work.tryEnd())
                    unsettled.push_back(std::move(work));
            }
    }
    for (Work& work : unsettled)
        work.settle(control);
}

// Makes the table say that every adapter is attached, or that none is, and gives what is to be done about it.
template <typename SdkControl, typename Observer, typename Adapter>
auto ObserverTable<SdkControl, Observer, Adapter>::take(bool attached, bool onlyNew) -> std::vector<Work>
{
    std::vector<Work> works;
    const std::lock_guard guard(m_mutex);
    works.reserve(m_entries.size());
    for (auto& [observer, entry] : m_entries) {
        if (observer == nullptr || (onlyNew && !entry.adapter->isNew))
            continue;
        entry.adapter->isNew = false;
        entry.adapter->available = attached;
        if (entry.attached == attached)
            continue;
        entry.attached = attached;
        if (entry.adapter->atWork) {
            entry.adapter->changed = true;
        } else {
            entry.adapter->atWork = true;
            works.emplace_back(*this, observer, entry.adapter.get(), !attached);
        }
    }
    return works;
}

// Deletes an adapter that was removed, or leaves that to the thread that is at work on it. One that the SDK may hold is
// kept under no observer. Under the lock.
template <typename SdkControl, typename Observer, typename Adapter>
void ObserverTable<SdkControl, Observer, Adapter>::dispose(std::unique_ptr<Registration> adapter) noexcept
{
    if (adapter->atWork) {
        adapter.release()->abandoned = true;
    } else if (adapter->lost) {
        Registration* const lost = adapter.release(); // not deleted, even if there is no memory for its entry
        try {
            auto& kept = m_entries[nullptr].adapter;
            lost->next = std::move(kept);
            kept.reset(lost);
        } catch (const std::bad_alloc&) {
            lost->abandoned = true; // and stays where it is
        }
    }
}

} // namespace tov::devices::service

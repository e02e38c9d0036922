#pragma once

#include "devices/cxx23.h"
#include "sdk/controlhandle.h"

#include <functional>
#include <mutex>
#include <utility>

namespace tov::devices {

/// Access to an SDK control that the instrument may release and offer again.
///
/// Holds the control weakly and lends it for the duration of one call. A control that is gone is
/// obtained afresh from the instrument at the next `lock()`.
///
/// Thread: *any thread* may lock or copy one object at the same time; moving from it and destroying it
/// are its owner's.
template <typename T>
class ReacquiringControl
{
public:
    /// Weak handle to the control.
    using Handle = sdk::ControlHandle<T>;

    /// A control that is lent, or none.
    using Locked = typename Handle::Locked;

    /// Asks the instrument for the control; an empty or expired handle says that it does not offer it. It must bear
    /// being called by several threads at the same time.
    using Reacquire = std::function<Handle()>;

    /// Stores `reacquire` and calls it once for the first handle. An empty function is allowed: the
    /// control is then absent for ever. What `reacquire` throws passes through.
    explicit ReacquiringControl(Reacquire reacquire)
        : m_reacquire(std::move(reacquire))
        , m_handle(m_reacquire ? m_reacquire() : Handle())
    {
    }

    /// Reaches the same control as `other`.
    ReacquiringControl(const ReacquiringControl& other)
        : m_reacquire(other.m_reacquire)
        , m_handle(other.handle())
    {
    }

    /// Takes the function but only copies the handle: `other` still reaches its present control and
    /// finds no new one after that.
    ReacquiringControl(ReacquiringControl&& other)
        : m_reacquire(std::exchange(other.m_reacquire, nullptr))
        , m_handle(other.handle())
    {
    }

    ReacquiringControl& operator=(const ReacquiringControl&) = delete;
    ReacquiringControl& operator=(ReacquiringControl&&) = delete;
    ~ReacquiringControl() = default;

    /// Lends the control, obtaining it afresh if the last one is gone; empty when the instrument does
    /// not offer it. The control lives at least as long as the result.
    ///
    /// While the control lives this neither allocates nor calls the instrument. No lock is held while
    /// the instrument is asked; when several threads ask at once, the last answer is kept. What the
    /// instrument throws passes through and leaves this object as it was.
    Locked lock() const
    {
        Locked locked = handle().lock();
        if (locked || !m_reacquire)
            return locked;

        Handle fresh = m_reacquire();
        locked = fresh.lock();
        // Kept even when it is empty or has expired already: the next call asks again.
        replaceHandle(std::move(fresh));
        return locked;
    }

private:
    Handle handle() const
    {
        const std::lock_guard guard(m_handleMutex);
        return m_handle;
    }

    void replaceHandle(Handle fresh) const
    {
        const std::lock_guard guard(m_handleMutex);
        m_handle = std::move(fresh);
    }

    Reacquire m_reacquire;
    mutable Handle m_handle;
    mutable std::mutex m_handleMutex; // guards m_handle; last by the layout that adapters build on
};

} // namespace tov::devices

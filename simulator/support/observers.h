#pragma once

#include "simulator/support/machine.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace tov::simulator {

/// The observers of one control object, or of every control object of one kind, which then are told together. Copies
/// stand for the same observers.
///
/// Once removal or `close()` has returned, no notification reaches the observer any more: both wait for one that is
/// being delivered to any observer of these controls, unless they are called from inside it.
///
/// Thread: *any thread*.
template <typename Observer>
class Observers
{
public:
    /// Notifies on the thread of `machine`, which it keeps alive; what waits there may keep it too, so the machine is
    /// stopped before its last owner goes.
    explicit Observers(std::shared_ptr<Machine> machine)
        : m_machine(std::move(machine))
    {
    }

    /// Registers `observer`, which is not owned and must not be null, with `control`; again: does nothing. Throws if
    /// `observing` was told to.
    void add(const void* control, Observer* observer, Operation observing) const
    {
        m_machine->begin(observing);
        const std::lock_guard guard(m_list->mutex);
        if (!m_list->has({control, observer}))
            m_list->registered.push_back({control, observer});
    }

    /// Removes `observer` from `control`; one that is not registered is ignored.
    void remove(const void* control, Observer* observer) const
    {
        const std::lock_guard guard(m_list->mutex);
        std::erase(m_list->registered, Registered{control, observer});
    }

    /// Removes everybody from `control`, which goes.
    void close(const void* control) const
    {
        const std::lock_guard guard(m_list->mutex);
        std::erase_if(m_list->registered, [=](const Registered& each) { return each.control == control; });
    }

    /// Calls each of `notifications` in turn on every observer that is there by then, on the simulator's thread.
    template <typename... Notifications>
    void notify(const Notifications&... notifications) const
    {
        notifyAfter({}, notifications...);
    }

    /// The same after `delay`.
    template <typename... Notifications>
    void notifyAfter(std::chrono::microseconds delay, const Notifications&... notifications) const
    {
        m_machine->notify([list = m_list, notifications...] { (list->tell(notifications), ...); }, delay);
    }

private:
    struct Registered
    {
        const void* control;
        Observer* observer;

        bool operator==(const Registered&) const = default;
    };

    struct List
    {
        bool has(const Registered& one) const { return std::ranges::find(registered, one) != registered.end(); }

        // An earlier observer may have removed a later one.
        template <typename Notification>
        void tell(const Notification& notification)
        {
            const std::lock_guard guard(mutex);
            const std::vector<Registered> told = registered;
            for (const Registered& each : told)
                if (has(each))
                    std::invoke(notification, *each.observer);
        }

        std::recursive_mutex mutex; // guards all below, also while observers are told
        std::vector<Registered> registered;
    };

    std::shared_ptr<Machine> m_machine;
    std::shared_ptr<List> m_list = std::make_shared<List>();
};

/// A simulated control that can be observed until it goes.
template <typename SdkIface, typename Observer = typename SdkIface::Observer>
class ObservedControl : public SdkIface
{
public:
    ObservedControl(const ObservedControl&) = delete;
    ObservedControl& operator=(const ObservedControl&) = delete;
    ~ObservedControl() override { m_observers.close(this); }

    void addObserver(Observer* observer) final { m_observers.add(this, observer, m_observing); }
    void removeObserver(Observer* observer) final { m_observers.remove(this, observer); }

protected:
    /// `observers` are those of this control, or those whom it shares with others of its kind.
    ObservedControl(Observers<Observer> observers, Operation observing)
        : m_observers(std::move(observers))
        , m_observing(observing)
    {
    }

    const Observers<Observer> m_observers;

private:
    const Operation m_observing;
};

} // namespace tov::simulator

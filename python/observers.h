#pragma once

// Callables of Python that hear of notifications, which come on any thread.

#include "python/converters.h"
#include "python/interpreterlock.h"

#include <QObject>

#include <algorithm>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace tov::python {

/// Whether this thread is inside a callable that hears of a notification. The instrument may wait for its end.
bool isInCallback();

/// Throws a RuntimeError in a callback: what waits for the instrument there would wait for itself.
void refuseInCallback();

/// A callable that is told until it is closed.
///
/// Thread: `tell()` on any thread, with or without the interpreter's lock; everything else with it.
class Subscriber
{
public:
    explicit Subscriber(py::function callable)
        : m_callable(std::move(callable))
    {
    }
    Subscriber(const Subscriber&) = delete;
    Subscriber& operator=(const Subscriber&) = delete;
    ~Subscriber();

    bool isClosed() const { return !m_callable; }

    /// No call begins any more.
    void close() { const py::function dropped = std::exchange(m_callable, py::function()); }

    /// Calls it. What it raises goes to sys.unraisablehook.
    template <typename... Arguments>
    void tell(const Arguments&... arguments)
    {
        call([&](const py::function& callable) { callable(arguments...); });
    }

private:
    void call(const std::function<void(const py::function&)>& how);

    py::function m_callable; // guarded by the interpreter's lock
};

/// What a program has of its subscription; letting go of it changes nothing.
class Subscription
{
public:
    Subscription(std::shared_ptr<Subscriber> subscriber, std::function<void()> detach)
        : m_subscriber(std::move(subscriber))
        , m_detach(std::move(detach))
    {
    }

    const std::shared_ptr<Subscriber>& subscriber() const { return m_subscriber; }
    bool isClosed() const { return m_subscriber->isClosed(); }

    void close()
    {
        m_subscriber->close();
        if (const auto detach = std::exchange(m_detach, nullptr))
            detach();
    }

private:
    std::shared_ptr<Subscriber> m_subscriber;
    std::function<void()> m_detach; // waits for nobody
};

/// The callables that hear of one notification of an observer.
template <typename... Arguments>
class Callables
{
public:
    Subscription subscribe(py::function callable)
    {
        auto subscriber = std::make_shared<Subscriber>(std::move(callable));
        const std::lock_guard guard(m_list->mutex);
        m_list->subscribers.push_back(subscriber);
        return {subscriber, [list = std::weak_ptr(m_list), subscriber] {
                    if (const auto locked = list.lock()) {
                        const std::lock_guard listGuard(locked->mutex);
                        std::erase(locked->subscribers, subscriber);
                    }
                }};
    }

    void tell(const Arguments&... arguments) const
    {
        for (const auto& each : subscribers())
            each->tell(arguments...);
    }

private:
    struct List
    {
        std::mutex mutex; // guards the subscribers; never held while Python runs
        std::vector<std::shared_ptr<Subscriber>> subscribers;
    };

    // A copy: who is told may come and go.
    std::vector<std::shared_ptr<Subscriber>> subscribers() const
    {
        const std::lock_guard guard(m_list->mutex);
        return m_list->subscribers;
    }

    std::shared_ptr<List> m_list = std::make_shared<List>();
};

/// Has a callable hear of a signal, in the thread that emits it.
template <typename Sender, typename... Arguments>
Subscription subscribe(Sender& sender, void (Sender::*signal)(Arguments...), py::function callable)
{
    auto subscriber = std::make_shared<Subscriber>(std::move(callable));
    const QMetaObject::Connection connection =
        QObject::connect(&sender, signal, [subscriber](Arguments... arguments) { subscriber->tell(arguments...); });
    return {subscriber, [connection] { QObject::disconnect(connection); }};
}

} // namespace tov::python

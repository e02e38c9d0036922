#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <chrono>

namespace tov::testing {

/// An application that knows how long the longest of its events took: so long nothing else could happen in the window.
class TimingApplication final : public QApplication
{
public:
    using QApplication::QApplication;

    static TimingApplication& instance() { return *static_cast<TimingApplication*>(qApp); }

    bool notify(QObject* receiver, QEvent* event) override
    {
        if (m_depth > 0)
            return QApplication::notify(receiver, event);
        ++m_depth;
        const auto delayBefore = runDelay();
        QElapsedTimer timer;
        timer.start();
        const bool isAccepted = QApplication::notify(receiver, event);
        const auto took = std::chrono::nanoseconds(timer.nsecsElapsed()) - (runDelay() - delayBefore);
        --m_depth;
        m_longest = std::max(m_longest, took);
        ++m_events;
        return isAccepted;
    }

    void startAnew()
    {
        m_longest = {};
        m_events = 0;
    }
    std::chrono::nanoseconds longest() const { return m_longest; }
    int events() const { return m_events; }

private:
    // How long this thread has waited for a processor, which is not the window's doing; 0 where the system does not
    // tell.
    static std::chrono::nanoseconds runDelay()
    {
        QFile file(QStringLiteral("/proc/thread-self/schedstat"));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return std::chrono::nanoseconds(file.readAll().split(' ').value(1).toLongLong());
    }

    int m_depth = 0;
    int m_events = 0;
    std::chrono::nanoseconds m_longest{};
};

} // namespace tov::testing

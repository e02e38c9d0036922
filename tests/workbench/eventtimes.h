#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <chrono>
#include <ctime>

namespace tov::testing {

/// An application that knows how long the longest of its events took: so long nothing else could happen in the window.
/// What it waited for a processor does not count. What it waited for a disk cannot be told from other waits, but is no
/// work.
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
        const auto workBefore = work();
        QElapsedTimer timer;
        timer.start();
        const bool isAccepted = QApplication::notify(receiver, event);
        const auto took = std::chrono::nanoseconds(timer.nsecsElapsed()) - (runDelay() - delayBefore);
        m_longestWork = std::max(m_longestWork, work() - workBefore);
        --m_depth;
        m_longest = std::max(m_longest, took);
        ++m_events;
        return isAccepted;
    }

    void startAnew()
    {
        m_longest = {};
        m_longestWork = {};
        m_events = 0;
    }
    std::chrono::nanoseconds longest() const { return m_longest; }
    std::chrono::nanoseconds longestWork() const { return m_longestWork; }
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

    // How long this thread has had a processor.
    static std::chrono::nanoseconds work()
    {
        std::timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    }

    int m_depth = 0;
    int m_events = 0;
    std::chrono::nanoseconds m_longest{};
    std::chrono::nanoseconds m_longestWork{};
};

} // namespace tov::testing

#include "comparisons.h"

#include "devices/reacquiringcontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"
#include "service/support/blockingbridge.h"

#include <QEventLoop>
#include <QFuture>
#include <QMetaObject>
#include <QObject>
#include <QPromise>
#include <QThread>

#include <benchmark/benchmark.h>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#ifdef __linux__
#include <sched.h>
#endif

namespace tov::benchmarks {

namespace {

using devices::service::SdkSerialNumberControl;
using sdk::service::IMemorySerialNumberControl;
using Answer = std::function<void(unsigned int, std::error_code)>;

class AtOnce : public IMemorySerialNumberControl
{
public:
    void readSerialNumber(Answer answer) override { answer(777, {}); }
    void writeSerialNumber(unsigned int, std::function<void(std::error_code)> answer) override { answer({}); }
    void addObserver(Observer*) override {}
    void removeObserver(Observer*) override {}
};

/// Answers on a thread that waits for questions.
class ByThread final : public AtOnce
{
public:
    ByThread() = default;
    ByThread(const ByThread&) = delete;
    ByThread& operator=(const ByThread&) = delete;
    ~ByThread() override
    {
        ask(nullptr);
        m_thread.join();
    }

    void readSerialNumber(Answer answer) override { ask(std::move(answer)); }

private:
    void ask(Answer answer)
    {
        {
            const std::lock_guard guard(m_mutex);
            m_answer = std::move(answer);
            m_isAsked = true;
        }
        m_asked.notify_one();
    }

    // Sleeps between the questions and never spins, so that each costs the same.
    void answerQuestions()
    {
        for (;;) {
            std::unique_lock lock(m_mutex);
            m_asked.wait(lock, [this] { return m_isAsked; });
            m_isAsked = false;
            const Answer answer = std::move(m_answer);
            lock.unlock();
            if (!answer)
                return;
            answer(777, {});
        }
    }

    std::mutex m_mutex; // guards all below but the thread
    std::condition_variable m_asked;
    bool m_isAsked = false;
    Answer m_answer;
    std::thread m_thread{[this] { answerQuestions(); }};
};

/// Keeps the calling thread, and those that it starts, on one core: a question and its answer then cost two
/// switches between threads, whatever the scheduler feels like.
class OneCore
{
public:
#ifdef __linux__
    OneCore()
    {
        sched_getaffinity(0, sizeof m_before, &m_before);
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(static_cast<std::size_t>(sched_getcpu()), &one);
        sched_setaffinity(0, sizeof one, &one);
    }
    ~OneCore() { sched_setaffinity(0, sizeof m_before, &m_before); }
    OneCore(const OneCore&) = delete;
    OneCore& operator=(const OneCore&) = delete;

private:
    cpu_set_t m_before{};
#endif
};

// The operation of the adapter, as an application calls it.
template <typename Control>
void adapterCall(benchmark::State& state)
{
    const std::shared_ptr<IMemorySerialNumberControl> control = std::make_shared<Control>();
    long lookups = 0;
    const SdkSerialNumberControl adapter(devices::ReacquiringControl<IMemorySerialNumberControl>([&, control] {
        ++lookups;
        return sdk::ControlHandle<IMemorySerialNumberControl>(control);
    }));
    measure(state, [&] { return adapter.serialNumber().value_or(0); }, &lookups);
}

// The bridge alone, for a control that is there.
template <typename Control>
void bridge(benchmark::State& state)
{
    using Result = std::expected<unsigned int, devices::service::ISerialNumberControl::Error>;
    const std::unique_ptr<IMemorySerialNumberControl> control = std::make_unique<Control>();
    measure(state, [&] {
        return devices::service::callAndWait<Result>(*control, &IMemorySerialNumberControl::readSerialNumber);
    });
}

unsigned int waitByHand(IMemorySerialNumberControl& control)
{
    std::promise<unsigned int> promise;
    std::future<unsigned int> future = promise.get_future();
    control.readSerialNumber([&promise](unsigned int number, std::error_code) { promise.set_value(number); });
    return future.get();
}

// The bare promise as it comes.
template <typename Control>
void promiseByHand(benchmark::State& state)
{
    const std::unique_ptr<IMemorySerialNumberControl> control = std::make_unique<Control>();
    measure(state, [&] { return waitByHand(*control); });
}

// The same on a control that is held weakly under a mutex, which an adapter cannot do without.
template <typename Control>
void lockedPromiseByHand(benchmark::State& state)
{
    const std::shared_ptr<IMemorySerialNumberControl> control = std::make_shared<Control>();
    const std::weak_ptr<IMemorySerialNumberControl> held = control;
    std::mutex mutex;
    measure(state, [&] {
        std::weak_ptr<IMemorySerialNumberControl> copy;
        {
            const std::lock_guard guard(mutex);
            copy = held;
        }
        const auto locked = copy.lock();
        return locked ? waitByHand(*locked) : 0;
    });
}

void BridgeAtOnce(benchmark::State& state)
{
    bridge<AtOnce>(state);
}

void PromiseAtOnce(benchmark::State& state)
{
    promiseByHand<AtOnce>(state);
}

void AdapterCallAtOnce(benchmark::State& state)
{
    adapterCall<AtOnce>(state);
}

void LockedPromiseAtOnce(benchmark::State& state)
{
    lockedPromiseByHand<AtOnce>(state);
}

void AdapterCallByThread(benchmark::State& state)
{
    const OneCore core;
    adapterCall<ByThread>(state);
}

void PromiseByThread(benchmark::State& state)
{
    const OneCore core;
    promiseByHand<ByThread>(state);
}

// What a Qt programmer might write instead.

void EventLoopByThread(benchmark::State& state)
{
    const OneCore core;
    ByThread control;
    measure(state, [&] {
        QEventLoop loop;
        std::atomic<unsigned int> result = 0;
        control.readSerialNumber([&](unsigned int number, std::error_code) {
            result = number;
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        });
        loop.exec();
        return result.load();
    });
}

void QtPromiseAtOnce(benchmark::State& state)
{
    AtOnce control;
    measure(state, [&] {
        QPromise<unsigned int> promise;
        QFuture<unsigned int> future = promise.future();
        promise.start();
        control.readSerialNumber([&promise](unsigned int number, std::error_code) {
            promise.addResult(number);
            promise.finish();
        });
        return future.result();
    });
}

void QtPromiseByThread(benchmark::State& state)
{
    const OneCore core;
    ByThread control;
    measure(state, [&] {
        // Shared, because the waiting thread may go on while the other is still inside finish().
        const auto promise = std::make_shared<QPromise<unsigned int>>();
        QFuture<unsigned int> future = promise->future();
        promise->start();
        control.readSerialNumber([promise](unsigned int number, std::error_code) {
            promise->addResult(number);
            promise->finish();
        });
        return future.result();
    });
}

void BlockingQueuedByThread(benchmark::State& state)
{
    const OneCore core;
    QThread thread;
    QObject receiver;
    receiver.moveToThread(&thread);
    thread.start();
    measure(state, [&] {
        unsigned int result = 0;
        QMetaObject::invokeMethod(&receiver, [] { return 777U; }, Qt::BlockingQueuedConnection, &result);
        return result;
    });
    thread.quit();
    thread.wait();
}

BENCHMARK(BridgeAtOnce);
BENCHMARK(PromiseAtOnce);
BENCHMARK(AdapterCallAtOnce);
BENCHMARK(LockedPromiseAtOnce);
BENCHMARK(QtPromiseAtOnce);
BENCHMARK(AdapterCallByThread)->UseRealTime();
BENCHMARK(PromiseByThread)->UseRealTime();
BENCHMARK(EventLoopByThread)->UseRealTime();
BENCHMARK(QtPromiseByThread)->UseRealTime();
BENCHMARK(BlockingQueuedByThread)->UseRealTime();

const bool compared[] = {
    compare({"bridge answered at once against a promise by hand", "BridgeAtOnce", "PromiseAtOnce", 1.1}),
    compare(
        {"adapter answered at once against lock and promise by hand", "AdapterCallAtOnce", "LockedPromiseAtOnce", 1.1}),
    compare({"adapter answered at once against a promise by hand", "AdapterCallAtOnce", "PromiseAtOnce"}),
    compare({"adapter answered by a thread against a promise by hand", "AdapterCallByThread", "PromiseByThread", 1.1}),
    compare({"instead: QPromise and QFuture, answered at once", "QtPromiseAtOnce", "AdapterCallAtOnce"}),
    compare({"instead: QPromise and QFuture, answered by a thread", "QtPromiseByThread", "AdapterCallByThread"}),
    compare({"instead: nested QEventLoop, answered by a thread", "EventLoopByThread", "AdapterCallByThread"}),
    compare({"instead: BlockingQueuedConnection to a thread", "BlockingQueuedByThread", "AdapterCallByThread"}),
};

} // namespace

} // namespace tov::benchmarks

#include "comparisons.h"

#include "devices/controls.h"
#include "devices/makecreatefunction.h"
#include "sdk/ivna.h"
#include "service/tuning/sdkloleakagecontrol.h"

#include <benchmark/benchmark.h>

#include <any>
#include <memory>
#include <mutex>

namespace tov::benchmarks {

namespace {

using devices::service::SdkLoLeakageControl;
using sdk::service::ILoLeakageControl;

class BareControl final : public ILoLeakageControl
{
public:
    bool isEnabled() override { return m_enabled; }
    void setEnabled(bool enabled) override { m_enabled = enabled; }

private:
    bool m_enabled = false;
};

/// Offers one control and counts how often it is asked for it.
class BareInstrument final : public sdk::IVna
{
public:
    std::shared_ptr<void> findControl(sdk::Key) override
    {
        ++lookups;
        return control;
    }
    void offerAnew() { control = std::make_shared<BareControl>(); }

    long lookups = 0;
    std::shared_ptr<ILoLeakageControl> control = std::make_shared<BareControl>();
};

/// What an adapter cannot do without, written by hand: the mutex pair around the copy of the weak reference, the
/// weak lock, the virtual call.
class ByHand
{
public:
    explicit ByHand(BareInstrument& instrument)
        : m_instrument(instrument)
    {
    }

    bool isEnabled() const
    {
        const auto control = lock();
        return control ? control->isEnabled() : false;
    }
    void setEnabled(bool enabled)
    {
        if (const auto control = lock())
            control->setEnabled(enabled);
    }

private:
    std::shared_ptr<ILoLeakageControl> lock() const
    {
        std::weak_ptr<ILoLeakageControl> weak;
        {
            const std::lock_guard guard(m_mutex);
            weak = m_control;
        }
        auto control = weak.lock();
        if (!control) {
            control = std::static_pointer_cast<ILoLeakageControl>(m_instrument.findControl({}));
            const std::lock_guard guard(m_mutex);
            m_control = control;
        }
        return control;
    }

    BareInstrument& m_instrument;
    mutable std::mutex m_mutex;
    mutable std::weak_ptr<ILoLeakageControl> m_control;
};

/// The same with the weak lock under the mutex, which saves the copy of the weak reference and makes
/// other threads wait for it.
class ByHandUnderMutex
{
public:
    explicit ByHandUnderMutex(BareInstrument& instrument)
        : m_control(instrument.control)
    {
    }

    bool isEnabled() const
    {
        std::shared_ptr<ILoLeakageControl> control;
        {
            const std::lock_guard guard(m_mutex);
            control = m_control.lock();
        }
        return control ? control->isEnabled() : false;
    }

private:
    mutable std::mutex m_mutex;
    std::weak_ptr<ILoLeakageControl> m_control;
};

std::shared_ptr<SdkLoLeakageControl> makeAdapter(sdk::IVna& instrument)
{
    const auto create =
        devices::makeCreateFunction<sdk::IVna, ILoLeakageControl, SdkLoLeakageControl, SdkLoLeakageControl>(
            devices::controls::loLeakage.keys.sdk);
    return std::any_cast<std::shared_ptr<SdkLoLeakageControl>>(create(&instrument));
}

void AdapterGetter(benchmark::State& state)
{
    BareInstrument instrument;
    const auto adapter = makeAdapter(instrument);
    measure(state, [&] { return adapter->isEnabled(); }, &instrument.lookups);
}

void ByHandGetter(benchmark::State& state)
{
    BareInstrument instrument;
    const ByHand byHand(instrument);
    byHand.isEnabled();
    measure(state, [&] { return byHand.isEnabled(); }, &instrument.lookups);
}

void ByHandUnderMutexGetter(benchmark::State& state)
{
    BareInstrument instrument;
    const ByHandUnderMutex byHand(instrument);
    measure(state, [&] { return byHand.isEnabled(); }, &instrument.lookups);
}

void AdapterSetter(benchmark::State& state)
{
    BareInstrument instrument;
    const auto adapter = makeAdapter(instrument);
    measure(
        state,
        [&] {
            adapter->setEnabled(true);
            return 0;
        },
        &instrument.lookups);
}

void ByHandSetter(benchmark::State& state)
{
    BareInstrument instrument;
    ByHand byHand(instrument);
    byHand.isEnabled();
    measure(
        state,
        [&] {
            byHand.setEnabled(true);
            return 0;
        },
        &instrument.lookups);
}

// Every call finds its control gone and a new one offered.
void AdapterReacquisition(benchmark::State& state)
{
    BareInstrument instrument;
    const auto adapter = makeAdapter(instrument);
    for (auto _ : state) {
        instrument.offerAnew();
        benchmark::DoNotOptimize(adapter->isEnabled());
    }
}

void ByHandReacquisition(benchmark::State& state)
{
    BareInstrument instrument;
    const ByHand byHand(instrument);
    for (auto _ : state) {
        instrument.offerAnew();
        benchmark::DoNotOptimize(byHand.isEnabled());
    }
}

// Two threads share one object.
void AdapterGetterShared(benchmark::State& state)
{
    static BareInstrument instrument;
    static const auto adapter = makeAdapter(instrument);
    for (auto _ : state)
        benchmark::DoNotOptimize(adapter->isEnabled());
}

void ByHandGetterShared(benchmark::State& state)
{
    static BareInstrument instrument;
    static const ByHand& byHand = []() -> const ByHand& {
        static const ByHand primed(instrument);
        primed.isEnabled();
        return primed;
    }();
    for (auto _ : state)
        benchmark::DoNotOptimize(byHand.isEnabled());
}

BENCHMARK(AdapterGetter);
BENCHMARK(ByHandGetter);
BENCHMARK(ByHandUnderMutexGetter);
BENCHMARK(AdapterSetter);
BENCHMARK(ByHandSetter);
BENCHMARK(AdapterReacquisition);
BENCHMARK(ByHandReacquisition);
BENCHMARK(AdapterGetterShared)->Threads(2)->UseRealTime();
BENCHMARK(ByHandGetterShared)->Threads(2)->UseRealTime();

const bool compared[] = {
    compare({"live getter against its limit by hand", "AdapterGetter", "ByHandGetter", 1.2}),
    compare({"live setter against its limit by hand", "AdapterSetter", "ByHandSetter", 1.2}),
    compare({"live getter against the weak lock under the mutex", "AdapterGetter", "ByHandUnderMutexGetter"}),
    compare({"two threads, one adapter: getter against by hand", "AdapterGetterShared", "ByHandGetterShared"}),
    compare({"two threads, one adapter: getter against one thread", "AdapterGetterShared", "AdapterGetter"}),
    compare({"reacquisition (with a new control) against by hand", "AdapterReacquisition", "ByHandReacquisition"}),
    compare({"reacquisition (with a new control) against a live getter", "AdapterReacquisition", "AdapterGetter"}),
};

} // namespace

} // namespace tov::benchmarks

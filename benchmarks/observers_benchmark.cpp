#include "comparisons.h"

#include "devices/reacquiringcontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tov::benchmarks {

namespace {

using devices::service::ISerialNumberControl;
using devices::service::SdkSerialNumberControl;
using devices::service::SerialNumberEvent;
using sdk::service::IMemorySerialNumberControl;

/// Keeps the observer that the adapter registers, to notify through it.
class Notifier final : public IMemorySerialNumberControl
{
public:
    void readSerialNumber(std::function<void(unsigned int, std::error_code)> answer) override { answer(0, {}); }
    void writeSerialNumber(unsigned int, std::function<void(std::error_code)> answer) override { answer({}); }
    void addObserver(Observer* added) override { observer = added; }
    void removeObserver(Observer*) override { observer = nullptr; }

    Observer* observer = nullptr;
};

class Summing final : public ISerialNumberControl::Observer
{
public:
    void onSerialNumberEvent(const SerialNumberEvent& event) override { sum += event.first; }

    unsigned int sum = 0;
};

template <std::size_t Count>
void RelayTo(benchmark::State& state)
{
    const auto notifier = std::make_shared<Notifier>();
    SdkSerialNumberControl adapter(devices::ReacquiringControl<IMemorySerialNumberControl>([notifier] {
        return sdk::ControlHandle<IMemorySerialNumberControl>(std::shared_ptr<IMemorySerialNumberControl>(notifier));
    }));
    std::vector<Summing> observers(Count);
    for (Summing& observer : observers)
        adapter.addObserver(&observer);
    for (auto _ : state)
        notifier->observer->onSerialNumberEvent(1, 2);
    benchmark::DoNotOptimize(observers.front().sum);
    for (Summing& observer : observers)
        adapter.removeObserver(&observer);
}

template <std::size_t Count>
void LoopOver(benchmark::State& state)
{
    std::mutex mutex;
    std::vector<Summing> observers(Count);
    std::vector<ISerialNumberControl::Observer*> pointers;
    for (Summing& observer : observers)
        pointers.push_back(&observer);
    for (auto _ : state) {
        const SerialNumberEvent event{2, 1};
        const std::lock_guard guard(mutex);
        for (auto* observer : pointers)
            observer->onSerialNumberEvent(event);
        benchmark::ClobberMemory();
    }
    benchmark::DoNotOptimize(observers.front().sum);
}

BENCHMARK(RelayTo<1>);
BENCHMARK(LoopOver<1>);
BENCHMARK(RelayTo<4>);
BENCHMARK(LoopOver<4>);
BENCHMARK(RelayTo<16>);
BENCHMARK(LoopOver<16>);

const bool compared[] = {
    compare({"notification to 1 observer against a loop under a mutex", "RelayTo<1>", "LoopOver<1>"}),
    compare({"notification to 4 observers against a loop under a mutex", "RelayTo<4>", "LoopOver<4>"}),
    compare({"notification to 16 observers against a loop under a mutex", "RelayTo<16>", "LoopOver<16>"}),
};

} // namespace

} // namespace tov::benchmarks

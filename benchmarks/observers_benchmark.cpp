#include "comparisons.h"
#include "handleof.h"
#include "relaybyhand.h"

#include "sdk/service/imemoryserialnumbercontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"

#include <benchmark/benchmark.h>

#include <array>
#include <memory>

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

// What `relay` does for its observers when the SDK notifies what is registered.
template <std::size_t Count>
void notify(benchmark::State& state, auto& relay, IMemorySerialNumberControl::Observer* registered)
{
    std::array<Summing, Count> observers;
    for (Summing& observer : observers)
        relay.addObserver(&observer);
    benchmark::DoNotOptimize(registered);
    measure(state, [&] {
        registered->onSerialNumberEvent(1, 2);
        return observers.front().sum;
    });
}

template <std::size_t Count>
void RelayTo(benchmark::State& state)
{
    const auto notifier = std::make_shared<Notifier>();
    SdkSerialNumberControl adapter(handleOf<IMemorySerialNumberControl>(notifier));
    notify<Count>(state, adapter, notifier->observer);
}

template <std::size_t Count>
void LoopOver(benchmark::State& state)
{
    RelayByHand relay;
    notify<Count>(state, relay, &relay);
}

BENCHMARK(RelayTo<1>);
BENCHMARK(LoopOver<1>);
BENCHMARK(RelayTo<4>);
BENCHMARK(LoopOver<4>);
BENCHMARK(RelayTo<16>);
BENCHMARK(LoopOver<16>);

const bool compared[] = {
    compare({"notification to 1 observer against a loop under a mutex", "RelayTo<1>", "LoopOver<1>", 1.3}),
    compare({"notification to 4 observers against a loop under a mutex", "RelayTo<4>", "LoopOver<4>", 1.3}),
    compare({"notification to 16 observers against a loop under a mutex", "RelayTo<16>", "LoopOver<16>", 1.3}),
};

} // namespace

} // namespace tov::benchmarks

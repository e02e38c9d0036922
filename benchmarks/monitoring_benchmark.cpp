#include "comparisons.h"
#include "handleof.h"

#include "allocation/allocationcounter.h"
#include "devices/controlregistry.h"
#include "sdk/itemperaturecontrol.h"
#include "sdk/service/iulkpowercontrol.h"
#include "service/monitoring/sdktemperaturecontrol.h"
#include "service/servicecontrols.h"
#include "service/tuning/sdkulkpowercontrol.h"
#include "simulator/simulatedinstrument.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <any>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace tov::benchmarks {

namespace {

using devices::service::SdkTemperatureControl;
using devices::service::SdkUlkPowerControl;

class Thermometer final : public sdk::ITemperatureControl
{
public:
    explicit Thermometer(std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i)
            m_modules["module " + std::to_string(i)] = 40.0F;
    }

    float temperature() override { return 40.0F; }
    const std::unordered_map<std::string, float>& modulesTemperature() override { return m_modules; }
    void addObserver(Observer* added) override { observer = added; }
    void removeObserver(Observer* /*removed*/) override { observer = nullptr; }

    Observer* observer = nullptr;

private:
    std::unordered_map<std::string, float> m_modules;
};

template <std::size_t Modules>
void ReadTemperatures(benchmark::State& state)
{
    const auto thermometer = std::make_shared<Thermometer>(Modules);
    const SdkTemperatureControl temperatures(handleOf<sdk::ITemperatureControl>(thermometer));
    for (auto _ : state)
        benchmark::DoNotOptimize(temperatures.modulesTemperature().data());
}

// What a reader does at least: copy the list under a mutex.
template <std::size_t Modules>
void CopyTemperatures(benchmark::State& state)
{
    std::mutex mutex;
    std::vector<SdkTemperatureControl::ModuleTemperature> list;
    for (std::size_t i = 0; i < Modules; ++i)
        list.push_back({QStringLiteral("module %1").arg(i), 40.0});
    const auto read = [&] {
        const std::lock_guard guard(mutex);
        return list;
    };
    for (auto _ : state)
        benchmark::DoNotOptimize(read().data());
}

template <std::size_t Modules>
void RefreshTemperatures(benchmark::State& state)
{
    const auto thermometer = std::make_shared<Thermometer>(Modules);
    const SdkTemperatureControl temperatures(handleOf<sdk::ITemperatureControl>(thermometer));
    for (auto _ : state)
        thermometer->observer->onTemperatureChanged();
}

/// Takes everything and does nothing.
class Inert final : public sdk::service::IUlkPowerControl
{
public:
    unsigned char loPower() override { return 0; }
    unsigned char rfPower() override { return 0; }
    void setLoPower(unsigned char code) override { benchmark::DoNotOptimize(code); }
    void setRfPower(unsigned char code) override { benchmark::DoNotOptimize(code); }
    unsigned char minPowerCode() override { return 0; }
    unsigned char maxPowerCode() override { return 0; }
    void setSyntPowerMode(int) override {}
    int syntPowerMode() override { return 0; }
    void setAttenuationMode(int) override {}
    int attenuationMode() override { return 0; }
    void setAttenuationStep(int) override {}
    int attenuationStep() override { return 0; }
    void setStepAttenuatorMode(int) override {}
    int stepAttenuatorMode() override { return 0; }
    int defaultAttenuationStep() override { return 0; }
    void enableDiscreteAttenuator(bool) override {}
    bool discreteAttenuatorEnabled() override { return false; }
    void setDiscreteAttenuatorMode(int) override {}
    int discreteAttenuatorMode() override { return 0; }
    void setCommonAttenuationMode(int) override {}
    int commonAttenuationMode() override { return 0; }
    void setCommonAttenuationStep(int) override {}
    int commonAttenuationStep() override { return 0; }
    void setAmpTPort2(unsigned char) override {}
    unsigned char ampTPort2() override { return 0; }
    void setAmpRPort1(unsigned char) override {}
    unsigned char ampRPort1() override { return 0; }
    void setAmpTPort1(unsigned char) override {}
    unsigned char ampTPort1() override { return 0; }
    void setRfPowerCodes(const std::vector<unsigned char>&) override {}
    void setLoPowerCodes(const std::vector<unsigned char>&) override {}
    void reset() override {}
};

// A setter with its signal to so many direct receivers.
template <int Receivers>
void TellPower(benchmark::State& state)
{
    SdkUlkPowerControl power(handleOf<sdk::service::IUlkPowerControl>(std::make_shared<Inert>()));
    int told = 0;
    for (int i = 0; i < Receivers; ++i)
        QObject::connect(&power, &SdkUlkPowerControl::rfPowerChanged, [&told] { ++told; });
    for (auto _ : state)
        power.setRfPower(1);
    benchmark::DoNotOptimize(told);
}

// The same without a signal.
void SetPowerByHand(benchmark::State& state)
{
    const auto handle = handleOf<sdk::service::IUlkPowerControl>(std::make_shared<Inert>());
    for (auto _ : state)
        if (const auto locked = handle.lock())
            locked->setRfPower(1);
}

std::vector<std::any> createAll(const devices::ControlRegistry& registry, sdk::IVna& instrument)
{
    std::vector<std::any> adapters;
    adapters.reserve(registry.entries().size());
    for (const auto& entry : registry.entries())
        adapters.push_back(entry.create(&instrument));
    return adapters;
}

void CreateAllTwenty(benchmark::State& state)
{
    simulator::SimulatedInstrument instrument;
    devices::ControlRegistry registry;
    devices::service::servicecontrols::registrate(&registry);
    for (auto _ : state)
        benchmark::DoNotOptimize(createAll(registry, instrument).data());

    const testing::HeapBytes heap;
    const auto adapters = createAll(registry, instrument);
    state.counters["bytes"] = static_cast<double>(heap.now());
    state.counters["missing"] = static_cast<double>(
        std::ranges::count_if(adapters, [](const std::any& adapter) { return !adapter.has_value(); }));
}

BENCHMARK(ReadTemperatures<8>);
BENCHMARK(CopyTemperatures<8>);
BENCHMARK(ReadTemperatures<64>);
BENCHMARK(CopyTemperatures<64>);
BENCHMARK(RefreshTemperatures<8>);
BENCHMARK(RefreshTemperatures<64>);
BENCHMARK(TellPower<0>);
BENCHMARK(TellPower<1>);
BENCHMARK(TellPower<16>);
BENCHMARK(SetPowerByHand);
BENCHMARK(CreateAllTwenty);

const bool shown[] = {
    compare(
        {"temperatures of 8 modules read against a copy under a mutex", "ReadTemperatures<8>", "CopyTemperatures<8>"}),
    compare({"temperatures of 64 modules read against a copy under a mutex", "ReadTemperatures<64>",
             "CopyTemperatures<64>"}),
    compare({"refresh of 64 modules against that of 8", "RefreshTemperatures<64>", "RefreshTemperatures<8>"}),
    compare({"setter with its signal to nobody against lock and call", "TellPower<0>", "SetPowerByHand"}),
    compare({"setter with its signal to 1 receiver against lock and call", "TellPower<1>", "SetPowerByHand"}),
    compare({"setter with its signal to 16 receivers against lock and call", "TellPower<16>", "SetPowerByHand"}),
    compare({"all 20 controls created against one live setter", "CreateAllTwenty", "SetPowerByHand"}),
    bound({"adapters that could not be created", "CreateAllTwenty", "missing", 0.0}),
    bound({"bytes on the heap of all 20 adapters", "CreateAllTwenty", "bytes", 16384.0}),
};

} // namespace

} // namespace tov::benchmarks

#include "comparisons.h"
#include "handleof.h"

#include "allocation/allocationcounter.h"
#include "service/calibration/frequencyplanconversion.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace tov::benchmarks {

namespace {

using devices::service::CalibrationState;
using devices::service::SdkYqIfswCalibrationControl;
using sdk::service::IYqIfswCalibrationControl;

constexpr std::size_t segmentCount = 1'000'000;
constexpr std::size_t recordCount = 10'000'000;
constexpr std::size_t observerCount = 1'000;

void PlanFromSdk(benchmark::State& state)
{
    const sdk::FrequencyPlan plan{std::vector<sdk::FrequencyPlan::Segment>(segmentCount, {1e9, 2e9, 201})};
    for (auto _ : state)
        benchmark::DoNotOptimize(devices::service::fromSdkFrequencyPlan(plan).data());
}

void PlanToSdk(benchmark::State& state)
{
    const std::vector<vna::FrequencySegment> segments(segmentCount, {1e9, 2e9, 201});
    for (auto _ : state)
        benchmark::DoNotOptimize(devices::service::toSdkFrequencyPlan(segments).segments.data());
}

// The same bytes into memory that is as new.
void PlanByMemcpy(benchmark::State& state)
{
    const std::vector<vna::FrequencySegment> segments(segmentCount, {1e9, 2e9, 201});
    constexpr std::size_t size = segmentCount * sizeof(vna::FrequencySegment);
    for (auto _ : state) {
        const std::unique_ptr<std::byte[]> copy(new std::byte[size]);
        std::memcpy(copy.get(), segments.data(), size);
        benchmark::DoNotOptimize(copy.get());
    }
}

/// Takes observers as the SDK does, and drops what is saved.
class Registering final : public IYqIfswCalibrationControl
{
public:
    void addObserver(Observer* observer) override { benchmark::DoNotOptimize(observer); }
    void removeObserver(Observer* observer) override { benchmark::DoNotOptimize(observer); }
    sdk::FrequencyPlan frequencyPlan() override { return {}; }
    void saveCalibrationData(CalibrationData data) override { benchmark::DoNotOptimize(data); }
};

class Silent final : public SdkYqIfswCalibrationControl::Observer
{
public:
    void onFirstEvent() override {}
    void onSecondEvent() override {}
    void onThirdEvent() override {}
    void onStateChanged(CalibrationState /*state*/) override {}
};

SdkYqIfswCalibrationControl makeAdapter()
{
    return SdkYqIfswCalibrationControl(handleOf<IYqIfswCalibrationControl>(std::make_shared<Registering>()));
}

void AddAndRemoveObservers(benchmark::State& state)
{
    SdkYqIfswCalibrationControl adapter = makeAdapter();
    std::vector<Silent> observers(observerCount);
    for (auto _ : state) {
        for (Silent& observer : observers)
            adapter.addObserver(&observer);
        for (Silent& observer : observers)
            adapter.removeObserver(&observer);
    }
}

// What has to be done at least: an entry of the table and an adapter for each observer.
void AddAndRemoveByHand(benchmark::State& state)
{
    struct Adapter
    {
        void* vtable;
        SdkYqIfswCalibrationControl::Observer* observer;
    };
    std::mutex mutex;
    std::unordered_map<SdkYqIfswCalibrationControl::Observer*, std::unique_ptr<Adapter>> table;
    std::vector<Silent> observers(observerCount);
    for (auto _ : state) {
        for (Silent& observer : observers) {
            const std::lock_guard guard(mutex);
            table.emplace(&observer, new Adapter{nullptr, &observer});
        }
        for (Silent& observer : observers) {
            const std::lock_guard guard(mutex);
            table.erase(&observer);
        }
    }
}

void SaveIfswData(benchmark::State& state)
{
    SdkYqIfswCalibrationControl adapter = makeAdapter();
    double peakOfGiven = 0.0;
    for (auto _ : state) {
        state.PauseTiming();
        testing::HeapBytes heap;
        SdkYqIfswCalibrationControl::IfswCalibrationData data;
        data.values.resize(recordCount / 10);
        for (auto& group : data.groups) {
            group.first.resize(recordCount / 6);
            group.second.resize(recordCount / 6);
        }
        const auto given = static_cast<double>(heap.now());
        heap.resetPeak();
        state.ResumeTiming();

        adapter.saveCalibrationData(std::move(data));
        peakOfGiven = static_cast<double>(heap.peak()) / given;
    }
    state.counters["peak of given"] = peakOfGiven;
}

BENCHMARK(PlanFromSdk);
BENCHMARK(PlanToSdk);
BENCHMARK(PlanByMemcpy);
BENCHMARK(AddAndRemoveObservers);
BENCHMARK(AddAndRemoveByHand);
BENCHMARK(SaveIfswData)->Iterations(1)->Unit(benchmark::kNanosecond);

const bool shown[] = {
    compare({"plan of 1,000,000 segments from the SDK against memcpy", "PlanFromSdk", "PlanByMemcpy"}),
    compare({"plan of 1,000,000 segments to the SDK against memcpy", "PlanToSdk", "PlanByMemcpy"}),
    compare({"1,000 observers added and removed against a bare table", "AddAndRemoveObservers", "AddAndRemoveByHand"}),
    bound({"peak memory of a save of 10,000,000 records, of what is given", "SaveIfswData", "peak of given", 1.5}),
};

} // namespace

} // namespace tov::benchmarks

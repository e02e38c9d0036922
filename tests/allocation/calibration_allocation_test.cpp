#include "allocation/allocationcounter.h"
#include "service/calibration/frequencyplanconversion.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <utility>

namespace tov::testing {

namespace {

using devices::service::SdkYqIfswCalibrationControl;

/// A control that allocates nothing itself and counts what it is given.
class BareIfswCalibrationControl final : public sdk::service::IYqIfswCalibrationControl
{
public:
    void addObserver(Observer* /*observer*/) override { ++added; }
    void removeObserver(Observer* /*observer*/) override { --added; }
    sdk::FrequencyPlan frequencyPlan() override { return {}; }
    void saveCalibrationData(CalibrationData /*data*/) override { ++saves; }

    int added = 0;
    int saves = 0;
};

class Nobody final : public SdkYqIfswCalibrationControl::Observer
{
public:
    void onFirstEvent() override {}
    void onSecondEvent() override {}
    void onThirdEvent() override {}
    void onStateChanged(devices::service::CalibrationState /*state*/) override {}
};

SdkYqIfswCalibrationControl::IfswCalibrationData largeData(std::size_t perVector)
{
    SdkYqIfswCalibrationControl::IfswCalibrationData data;
    data.values.resize(perVector);
    for (auto& group : data.groups) {
        group.first.resize(perVector);
        group.second.resize(perVector);
    }
    return data;
}

class IfswCalibrationMemory : public ::testing::Test
{
protected:
    std::shared_ptr<BareIfswCalibrationControl> control = std::make_shared<BareIfswCalibrationControl>();
    SdkYqIfswCalibrationControl adapter{devices::ReacquiringControl<sdk::service::IYqIfswCalibrationControl>([this] {
        return sdk::ControlHandle<sdk::service::IYqIfswCalibrationControl>(
            std::shared_ptr<sdk::service::IYqIfswCalibrationControl>(control));
    })};
};

} // namespace

TEST_F(IfswCalibrationMemory, IsNeverMoreThanTheGivenDataAndOneGroup)
{
    HeapBytes heap;
    auto data = largeData(10'000);
    const long long given = heap.now();
    heap.resetPeak();
    adapter.saveCalibrationData(std::move(data));
    EXPECT_EQ(control->saves, 1);
    EXPECT_LE(heap.now(), 0);
    EXPECT_GT(heap.peak(), given);
    EXPECT_LT(heap.peak(), given * 3 / 2);
}

TEST_F(IfswCalibrationMemory, IsAllocatedOnceForEachOfTheSixVectors)
{
    auto data = largeData(10);
    const long before = allocations();
    adapter.saveCalibrationData(std::move(data));
    EXPECT_EQ(allocations() - before, 6);
}

TEST_F(IfswCalibrationMemory, IsMissingWithoutACallOfTheSdk)
{
    auto data = largeData(10);
    {
        const FailingAllocations failing;
        EXPECT_THROW(adapter.saveCalibrationData(std::move(data)), std::bad_alloc);
    }
    EXPECT_EQ(control->saves, 0);
}

TEST_F(IfswCalibrationMemory, IsMissingForAnObserverThatIsThenNotThere)
{
    Nobody observer;
    {
        const FailingAllocations failing;
        EXPECT_THROW(adapter.addObserver(&observer), std::bad_alloc);
    }
    EXPECT_EQ(control->added, 0);
    adapter.onControlsAvailable();
    EXPECT_EQ(control->added, 0);
    adapter.addObserver(&observer);
    EXPECT_EQ(control->added, 1);
    adapter.removeObserver(&observer);
}

TEST_F(IfswCalibrationMemory, IsMissingForAnOfferThatThenChangesNothing)
{
    Nobody observer;
    adapter.addObserver(&observer);
    adapter.onControlsAboutToBeReleased();
    {
        const FailingAllocations failing;
        EXPECT_THROW(adapter.onControlsAvailable(), std::bad_alloc);
    }
    EXPECT_EQ(control->added, 0);
    adapter.onControlsAvailable();
    EXPECT_EQ(control->added, 1);
    adapter.removeObserver(&observer);
}

TEST(FrequencyPlanMemory, IsAllocatedOnceAndNotForAnEmptyPlan)
{
    const sdk::FrequencyPlan plan{{{1.0, 2.0, 3}, {2.0, 3.0, 4}}};
    long before = allocations();
    const auto segments = devices::service::fromSdkFrequencyPlan(plan);
    EXPECT_EQ(allocations() - before, 1);
    before = allocations();
    const auto back = devices::service::toSdkFrequencyPlan(segments);
    EXPECT_EQ(allocations() - before, 1);
    before = allocations();
    EXPECT_TRUE(devices::service::fromSdkFrequencyPlan({}).empty());
    EXPECT_TRUE(devices::service::toSdkFrequencyPlan({}).segments.empty());
    EXPECT_EQ(allocations() - before, 0);
}

TEST(FrequencyPlanMemory, IsMissingAsAnException)
{
    const sdk::FrequencyPlan plan{{{1.0, 2.0, 3}}};
    const FailingAllocations failing;
    EXPECT_THROW(devices::service::fromSdkFrequencyPlan(plan), std::bad_alloc);
}

} // namespace tov::testing

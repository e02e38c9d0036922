#pragma once

#include "sdk/service/iyqfactorypowercalibrationcontrol.h"
#include "sdk/service/iyqifswcalibrationcontrol.h"
#include "testing/observedcontrol.h"
#include "testing/recordingcontrol.h"

#include <chrono>
#include <functional>
#include <utility>
#include <vector>

namespace tov::testing {

/// What the fakes of the two calibrations of the Yq module have in common.
template <typename SdkIface>
class FakeCalibrationControl : public SdkIface,
                               public RecordingControl,
                               public ObservedControl<typename SdkIface::Observer>
{
public:
    /// Who observes the calibration.
    using Observer = typename SdkIface::Observer;

    /// Runs before and after each registration is changed.
    std::function<void()> aroundRegistration = [] {};

    /// Records the call and registers `observer`.
    void addObserver(Observer* observer) override
    {
        called("addObserver");
        aroundRegistration();
        this->add(observer);
        aroundRegistration();
    }
    /// Records the call and ends every registration of `observer`.
    void removeObserver(Observer* observer) override
    {
        called("removeObserver");
        aroundRegistration();
        this->remove(observer);
        aroundRegistration();
    }
    /// Records the call and gives the answer that the test gave.
    sdk::FrequencyPlan frequencyPlan() override { return called<sdk::FrequencyPlan>("frequencyPlan"); }
};

/// A fake of `sdk::service::IYqIfswCalibrationControl`.
class FakeYqIfswCalibrationControl final : public FakeCalibrationControl<sdk::service::IYqIfswCalibrationControl>
{
public:
    /// What the last save brought.
    CalibrationData saved;

    void saveCalibrationData(CalibrationData data) override
    {
        saved = std::move(data);
        called("saveCalibrationData");
    }
};

/// A fake of `sdk::service::IYqFactoryPowerCalibrationControl`.
class FakeYqFactoryPowerCalibrationControl final
    : public FakeCalibrationControl<sdk::service::IYqFactoryPowerCalibrationControl>
{
public:
    /// What the last save brought.
    std::vector<PowerCalPoint> saved;

    void saveCalibrationData(std::chrono::sys_seconds time, double parameter,
                             std::vector<PowerCalPoint> points) override
    {
        saved = std::move(points);
        called("saveCalibrationData", static_cast<long long>(time.time_since_epoch().count()), parameter);
    }
};

} // namespace tov::testing

#pragma once

#include "devices/icontrollifecycleobserver.h"
#include "devices/reacquiringcontrol.h"
#include "sdk/service/iyqfactorypowercalibrationcontrol.h"
#include "service/calibration/calibrationstate.h"
#include "service/devicesservice_export.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace tov::devices::service {

/// The factory power calibration of the Yq module.
///
/// Nothing is cached: the plan is asked for at each call. What the SDK throws passes through every operation.
///
/// Thread: *any thread*.
class DEVICESSERVICE_EXPORT SdkYqFactoryPowerCalibrationControl : public IControlLifecycleObserver
{
public:
    /// Told of the calibration on the *SDK's notification thread*. What the three events mean is the SDK's. It may add
    /// and remove observers of the same control; one that removes itself must live until the notification has ended.
    class Observer
    {
    public:
        virtual ~Observer() = default;

        /// The SDK's first event.
        virtual void onFirstEvent() = 0;

        /// The SDK's second event.
        virtual void onSecondEvent() = 0;

        /// The SDK's third event.
        virtual void onThirdEvent() = 0;

        /// The calibration is in `state` now.
        virtual void onStateChanged(CalibrationState state) = 0;
    };

    /// The frequencies on which the calibration is measured, in the SDK's unit, unscaled.
    struct FrequencyPlan
    {
        /// The points from one frequency to another, as the SDK gives them: nothing is ordered or checked.
        struct Segment
        {
            double start = 0.0;      ///< first bound
            double stop = 0.0;       ///< second bound
            std::int32_t points = 0; ///< number of points
        };

        std::vector<Segment> segments; ///< in the SDK's order
    };

    /// One measured point, whose meaning and units are the SDK's.
    struct PowerCalPoint
    {
        double value1 = 0.0;     ///< the SDK's first value
        float value2 = 0.0F;     ///< the SDK's second value
        float value3 = 0.0F;     ///< the SDK's third value
        std::uint8_t value4 = 0; ///< the SDK's fourth value
        std::uint8_t value5 = 0; ///< the SDK's fifth value
        float value6 = 0.0F;     ///< the SDK's sixth value
        std::uint8_t value7 = 0; ///< the SDK's seventh value
        float value8 = 0.0F;     ///< the SDK's eighth value
        float value9 = 0.0F;     ///< the SDK's ninth value
    };

    /// Reaches the SDK's control through `control`; registers nothing.
    explicit SdkYqFactoryPowerCalibrationControl(
        ReacquiringControl<sdk::service::IYqFactoryPowerCalibrationControl> control);
    SdkYqFactoryPowerCalibrationControl(const SdkYqFactoryPowerCalibrationControl&) = delete;
    SdkYqFactoryPowerCalibrationControl& operator=(const SdkYqFactoryPowerCalibrationControl&) = delete;

    /// Leaves the SDK alone: every observer must have been removed, or the controls released, before.
    ~SdkYqFactoryPowerCalibrationControl() override;

    /// Empty when the control is absent.
    FrequencyPlan frequencyPlan() const;

    /// Hands `points` with their time stamp to the SDK to be stored and returns when the SDK has. The meaning of
    /// `parameter` is the SDK's. Nothing is checked, and an empty list is handed over too. When the control is absent
    /// they are dropped.
    void saveCalibrationData(std::chrono::sys_seconds time, double parameter, std::vector<PowerCalPoint> points);

    /// Registers `observer`, which is not owned, once however often it is added; a null pointer is ignored. Works
    /// while the control is absent too: the observer is told after `onControlsAvailable()`.
    void addObserver(Observer* observer);

    /// Removes `observer`; afterwards it is not told any more, also when the SDK throws. Works while the control is
    /// absent too.
    void removeObserver(Observer* observer);

    void onControlsAboutToBeReleased() override;
    void onControlsAvailable() override;

private:
    class DEVICESSERVICE_NO_EXPORT SdkObserverAdapter;

    auto observers();

    ReacquiringControl<sdk::service::IYqFactoryPowerCalibrationControl> m_control;
    std::mutex m_mutex; // guards all below
    std::unordered_map<Observer*, std::shared_ptr<SdkObserverAdapter>> m_observers;
};

} // namespace tov::devices::service

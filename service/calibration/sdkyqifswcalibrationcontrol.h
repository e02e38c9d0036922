#pragma once

#include "devices/icontrollifecycleobserver.h"
#include "devices/reacquiringcontrol.h"
#include "sdk/service/iyqifswcalibrationcontrol.h"
#include "service/calibration/calibrationstate.h"
#include "service/devicesservice_export.h"

#include <array>
#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace tov::devices::service {

/// The calibration of the Yq module's intermediate-frequency (IF) switch.
///
/// Nothing is cached: the plan is asked for at each call. What the SDK throws passes through every operation.
///
/// Thread: *any thread*.
class DEVICESSERVICE_EXPORT SdkYqIfswCalibrationControl : public IControlLifecycleObserver
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

    /// A record of the calibration data, whose meaning and units are the SDK's.
    struct IfswCalibrationRecord
    {
        double value1 = 0.0; ///< the SDK's first value
        double value2 = 0.0; ///< the SDK's second value
        double value3 = 0.0; ///< the SDK's third value
    };

    /// Two lists of records.
    struct IfswCalibrationGroup
    {
        std::vector<IfswCalibrationRecord> first;  ///< the SDK's first list
        std::vector<IfswCalibrationRecord> second; ///< the SDK's second list
    };

    /// The calibration data, whose meaning and units are the SDK's. Lists may be of any length: nothing is checked.
    struct IfswCalibrationData
    {
        std::vector<double> values;                 ///< the SDK's single values
        std::array<IfswCalibrationGroup, 3> groups; ///< the SDK's three groups, in its order
    };

    /// Reaches the SDK's control through `control`; registers nothing.
    explicit SdkYqIfswCalibrationControl(ReacquiringControl<sdk::service::IYqIfswCalibrationControl> control);
    SdkYqIfswCalibrationControl(const SdkYqIfswCalibrationControl&) = delete;
    SdkYqIfswCalibrationControl& operator=(const SdkYqIfswCalibrationControl&) = delete;

    /// Leaves the SDK alone: every observer must have been removed, or the controls released, before.
    ~SdkYqIfswCalibrationControl() override;

    /// Empty when the control is absent.
    FrequencyPlan frequencyPlan() const;

    /// Hands `data` to the SDK to be stored and returns when the SDK has. Move them in: of large data no more than one
    /// group is then held twice. When the control is absent they are dropped.
    void saveCalibrationData(IfswCalibrationData data);

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

    ReacquiringControl<sdk::service::IYqIfswCalibrationControl> m_control;
    std::mutex m_mutex; // guards all below
    std::unordered_map<Observer*, std::shared_ptr<SdkObserverAdapter>> m_observers;
};

} // namespace tov::devices::service

#pragma once

#include "sdk/frequencyplan.h"

#include <chrono>
#include <cstdint>
#include <vector>

namespace sdk::service {

/// The factory power calibration of the Yq module.
///
/// Thread: *any thread*.
class IYqFactoryPowerCalibrationControl
{
public:
    /// One measured point, whose meaning and units are the instrument's.
    struct PowerCalPoint
    {
        double value1 = 0.0;     ///< first value
        float value2 = 0.0F;     ///< second value
        float value3 = 0.0F;     ///< third value
        std::uint8_t value4 = 0; ///< fourth value
        std::uint8_t value5 = 0; ///< fifth value
        float value6 = 0.0F;     ///< sixth value
        std::uint8_t value7 = 0; ///< seventh value
        float value8 = 0.0F;     ///< eighth value
        float value9 = 0.0F;     ///< ninth value
    };

    /// Told of the calibration on the SDK's notification thread. What the three events mean is the instrument's.
    class Observer
    {
    public:
        virtual ~Observer() = default;

        /// The instrument's first event.
        virtual void onFirstEvent() = 0;

        /// The instrument's second event.
        virtual void onSecondEvent() = 0;

        /// The instrument's third event.
        virtual void onThirdEvent() = 0;

        /// The calibration is in `state` now, a number from 0 to 3; any other one counts as 0.
        virtual void onStateChanged(int state) = 0;
    };

    virtual ~IYqFactoryPowerCalibrationControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// Tells `observer`, which is not owned, from now on; it may be told before this returns.
    virtual void addObserver(Observer* observer) = 0;

    /// No notification reaches `observer` once this has returned. One that is not registered is ignored. A call
    /// inside a notification does not wait for that one to end.
    virtual void removeObserver(Observer* observer) = 0;

    /// The frequencies on which the calibration is measured.
    virtual FrequencyPlan frequencyPlan() = 0;

    /// Takes `points` with their time stamp to be stored. Nothing answers later; what it throws reaches the
    /// application. The meaning of `parameter` is the instrument's. Nothing was checked, and there may be no points.
    virtual void saveCalibrationData(std::chrono::sys_seconds time, double parameter,
                                     std::vector<PowerCalPoint> points) = 0;
};

} // namespace sdk::service

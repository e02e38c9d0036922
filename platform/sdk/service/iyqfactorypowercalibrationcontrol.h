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
    struct PowerCalPoint
    {
        double value1 = 0.0;
        float value2 = 0.0F;
        float value3 = 0.0F;
        std::uint8_t value4 = 0;
        std::uint8_t value5 = 0;
        float value6 = 0.0F;
        std::uint8_t value7 = 0;
        float value8 = 0.0F;
        float value9 = 0.0F;
    };

    /// Told of the calibration on the SDK's notification thread.
    class Observer
    {
    public:
        virtual ~Observer() = default;

        virtual void onFirstEvent() = 0;
        virtual void onSecondEvent() = 0;
        virtual void onThirdEvent() = 0;
        virtual void onStateChanged(int state) = 0;
    };

    virtual ~IYqFactoryPowerCalibrationControl() = default;

    virtual void reserved1() {}

    virtual void addObserver(Observer* observer) = 0;

    /// No notification reaches `observer` once this has returned.
    virtual void removeObserver(Observer* observer) = 0;

    /// The frequencies on which the calibration is measured.
    virtual FrequencyPlan frequencyPlan() = 0;

    virtual void saveCalibrationData(std::chrono::sys_seconds time, double parameter,
                                     std::vector<PowerCalPoint> points) = 0;
};

} // namespace sdk::service

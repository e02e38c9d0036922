#pragma once

#include "sdk/frequencyplan.h"

#include <array>
#include <vector>

namespace sdk::service {

/// The calibration of the Yq module's intermediate-frequency (IF) switch.
///
/// Thread: *any thread*.
class IYqIfswCalibrationControl
{
public:
    struct CalibrationRecord
    {
        double value1 = 0.0;
        double value2 = 0.0;
        double value3 = 0.0;
    };

    struct CalibrationGroup
    {
        std::vector<CalibrationRecord> first;
        std::vector<CalibrationRecord> second;
    };

    struct CalibrationData
    {
        std::vector<double> values;
        std::array<CalibrationGroup, 3> groups;
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

    virtual ~IYqIfswCalibrationControl() = default;

    virtual void reserved1() {}

    virtual void addObserver(Observer* observer) = 0;

    /// No notification reaches `observer` once this has returned.
    virtual void removeObserver(Observer* observer) = 0;

    /// The frequencies on which the calibration is measured.
    virtual FrequencyPlan frequencyPlan() = 0;

    virtual void saveCalibrationData(CalibrationData data) = 0;
};

} // namespace sdk::service

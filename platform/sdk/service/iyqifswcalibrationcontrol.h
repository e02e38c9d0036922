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
    /// A record of the calibration data, whose meaning and units are the instrument's.
    struct CalibrationRecord
    {
        double value1 = 0.0; ///< first value
        double value2 = 0.0; ///< second value
        double value3 = 0.0; ///< third value
    };

    /// Two lists of records.
    struct CalibrationGroup
    {
        std::vector<CalibrationRecord> first;  ///< first list
        std::vector<CalibrationRecord> second; ///< second list
    };

    /// The calibration data as the application gave them. Lists may be of any length: nothing was checked.
    struct CalibrationData
    {
        std::vector<double> values;             ///< single values
        std::array<CalibrationGroup, 3> groups; ///< the three groups, in the application's order
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

    virtual ~IYqIfswCalibrationControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// Tells `observer`, which is not owned, from now on; it may be told before this returns.
    virtual void addObserver(Observer* observer) = 0;

    /// No notification reaches `observer` once this has returned. One that is not registered is ignored. A call
    /// inside a notification does not wait for that one to end.
    virtual void removeObserver(Observer* observer) = 0;

    /// The frequencies on which the calibration is measured.
    virtual FrequencyPlan frequencyPlan() = 0;

    /// Takes `data` to be stored. Nothing answers later; what it throws reaches the application.
    virtual void saveCalibrationData(CalibrationData data) = 0;
};

} // namespace sdk::service

#pragma once

#include <cstdint>

namespace sdk::service::calibrations {

/// The controller of a calibration unit. An instrument has two of them.
///
/// Thread: *any thread*.
class ICalibrationController
{
public:
    /// How far a save has come.
    struct SaveProgress
    {
        std::uint64_t done = 0;
        std::uint64_t total = 0;
    };

    /// Told of the unit on the SDK's notification thread.
    class Observer
    {
    public:
        virtual ~Observer() = default;

        virtual void onUnitStatusChanged() = 0;
        virtual void onSaveProgress(int save, const SaveProgress& progress) = 0;
        virtual void onConfigurationChanged() = 0;
    };

    virtual ~ICalibrationController() = default;

    virtual void reserved1() {}

    virtual void addObserver(Observer* observer) = 0;

    /// No notification reaches `observer` once this has returned.
    virtual void removeObserver(Observer* observer) = 0;
};

} // namespace sdk::service::calibrations

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
        std::uint64_t done = 0;  ///< how much is done, in the unit of `total`
        std::uint64_t total = 0; ///< how much there is to do; 0 is told as 0 percent
    };

    /// Told of the unit on the SDK's notification thread.
    class Observer
    {
    public:
        virtual ~Observer() = default;

        /// The status of the unit must be read again.
        virtual void onUnitStatusChanged() = 0;

        /// A save has come so far. The library does not use `save`.
        virtual void onSaveProgress(int save, const SaveProgress& progress) = 0;

        /// The configuration must be read again.
        virtual void onConfigurationChanged() = 0;
    };

    virtual ~ICalibrationController() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// Tells `observer`, which is not owned, from now on; it may be told before this returns. What it throws reaches
    /// the application when the library's observer is added first; later it must not throw.
    virtual void addObserver(Observer* observer) = 0;

    /// No notification reaches `observer` once this has returned. One that is not registered is ignored: the library
    /// removes its observer before it adds it, lest it be told twice. Must not throw.
    virtual void removeObserver(Observer* observer) = 0;
};

} // namespace sdk::service::calibrations

#pragma once

#include "sdk/correctionflag.h"

#include <cstdint>

namespace sdk {

/// The factory corrections of the instrument. Masks hold one bit for each `CorrectionFlag`.
///
/// Thread: *any thread*.
class IFactoryCorrectionControl
{
public:
    /// Told of the corrections on the SDK's notification thread.
    class IObserver
    {
    public:
        virtual ~IObserver() = default;

        /// The corrections have changed and are to be read again.
        virtual void onCorrectionsChanged() = 0;

        /// The states of the corrections have changed and are to be read again.
        virtual void onCorrectionStatesChanged() = 0;

        /// The correction of `flag` was switched on or off.
        virtual void onEnabledChanged(CorrectionFlag flag, bool enabled) = 0;
    };

    virtual ~IFactoryCorrectionControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// The corrections that the instrument has.
    virtual std::uint16_t supportedCorrections() = 0;

    /// The corrections whose data are valid.
    virtual std::uint16_t validCorrections() = 0;

    /// The corrections that are switched on.
    virtual std::uint16_t enabledCorrections() = 0;

    /// The corrections that the user may switch.
    virtual std::uint16_t modifiableCorrections() = 0;

    /// Switches the correction of `flag`. The library has just found it valid and modifiable, which may have changed.
    virtual void setEnabled(CorrectionFlag flag, bool enabled) = 0;

    /// Tells `observer`, which is not owned, from now on; it may be told before this returns. It may come again for one
    /// that is registered: what that does is the SDK's.
    virtual void addObserver(IObserver* observer) = 0;

    /// No notification reaches `observer` once this has returned. One that is not registered is ignored.
    virtual void removeObserver(IObserver* observer) = 0;
};

} // namespace sdk

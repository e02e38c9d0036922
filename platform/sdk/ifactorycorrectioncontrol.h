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

        virtual void onCorrectionsChanged() = 0;
        virtual void onCorrectionStatesChanged() = 0;
        virtual void onEnabledChanged(CorrectionFlag flag, bool enabled) = 0;
    };

    virtual ~IFactoryCorrectionControl() = default;

    virtual void reserved1() {}

    virtual std::uint16_t supportedCorrections() = 0;

    /// The corrections whose data are valid.
    virtual std::uint16_t validCorrections() = 0;

    virtual std::uint16_t enabledCorrections() = 0;

    /// The corrections that the user may switch.
    virtual std::uint16_t modifiableCorrections() = 0;

    virtual void setEnabled(CorrectionFlag flag, bool enabled) = 0;

    virtual void addObserver(IObserver* observer) = 0;

    /// No notification reaches `observer` once this has returned.
    virtual void removeObserver(IObserver* observer) = 0;
};

} // namespace sdk

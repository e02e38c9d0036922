#pragma once

#include "devices/factorycorrection.h"
#include "devices/icontrollifecycleobserver.h"
#include "devices/reacquiringcontrol.h"
#include "sdk/ifactorycorrectioncontrol.h"
#include "service/devicesservice_export.h"

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace tov::devices::service {

/// The factory corrections of the instrument.
///
/// Nothing is cached: every query goes to the instrument. What the SDK throws passes through every operation.
///
/// Thread: *any thread* for the queries and `setEnabled()`. Observers are added and removed and the lifecycle
/// operations called in the *owner's thread*.
class DEVICESSERVICE_EXPORT SdkFactoryCorrectionControl : public IControlLifecycleObserver
{
public:
    /// Told of the corrections on the *SDK's notification thread*, and of the first two inside
    /// `onControlsAvailable()`. It must not add or remove observers of the same control meanwhile.
    class Observer
    {
    public:
        virtual ~Observer() = default;

        /// The corrections have changed and are to be read again.
        virtual void onCorrectionsChanged() = 0;

        /// The states of the corrections have changed and are to be read again; which, is the SDK's.
        virtual void onCorrectionStatesChanged() = 0;

        /// `correction` was switched on or off. Not told of corrections that the application does not know.
        virtual void onEnabledChanged(FactoryCorrection correction, bool enabled) = 0;
    };

    /// Reaches the SDK's control through `control`; registers nothing.
    explicit SdkFactoryCorrectionControl(ReacquiringControl<sdk::IFactoryCorrectionControl> control);

    SdkFactoryCorrectionControl(const SdkFactoryCorrectionControl&) = delete;
    SdkFactoryCorrectionControl& operator=(const SdkFactoryCorrectionControl&) = delete;

    /// Leaves the SDK alone: every observer must have been removed, or the controls released, before.
    ~SdkFactoryCorrectionControl() override;

    /// The corrections that instrument and application both know, in the order of the instrument's flags. Empty
    /// when the control is absent.
    std::vector<FactoryCorrection> supported() const;

    /// Whether the data of `correction` are valid; false when the control is absent.
    bool isValid(FactoryCorrection correction) const;

    /// Whether `correction` is switched on; false when the control is absent.
    bool isEnabled(FactoryCorrection correction) const;

    /// Whether the user may switch `correction`; false when the control is absent.
    bool isModifiable(FactoryCorrection correction) const;

    /// Switches `correction` on or off if the control is there and it is valid and modifiable; otherwise does nothing.
    /// The controls may be released between these checks and the switching.
    void setEnabled(FactoryCorrection correction, bool enable);

    /// Registers `observer`, which is not owned, once however often it is added; a null pointer is ignored. While
    /// the control is absent the observer waits for `onControlsAvailable()`.
    void addObserver(Observer* observer);

    /// Removes `observer`, but only while the control is present: otherwise it stays and is told again after
    /// `onControlsAvailable()`.
    void removeObserver(Observer* observer);

    void onControlsAboutToBeReleased() override;

    /// Registers every observer with the new control and has it read everything again. Not to be called twice
    /// without a release in between: every observer would be registered with the SDK twice.
    void onControlsAvailable() override;

private:
    class DEVICESSERVICE_NO_EXPORT SdkObserverAdapter;

    bool isIn(std::uint16_t (sdk::IFactoryCorrectionControl::*mask)(), FactoryCorrection correction) const;

    ReacquiringControl<sdk::IFactoryCorrectionControl> m_control;
    std::unordered_map<Observer*, std::unique_ptr<SdkObserverAdapter>> m_observers;
};

} // namespace tov::devices::service

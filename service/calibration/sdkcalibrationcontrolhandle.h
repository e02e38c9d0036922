#pragma once

#include "devices/icontrollifecycleobserver.h"
#include "devices/reacquiringcontrol.h"
#include "sdk/service/calibrations/icalibrationcontroller.h"
#include "service/devicesservice_export.h"

#include <QObject>

namespace tov::devices::service {

/// One of the instrument's two calibration controllers, lent to whoever needs it.
///
/// Thread: *any thread* for `lock()`; signals are emitted in the thread that calls the lifecycle operations.
class DEVICESSERVICE_EXPORT SdkCalibrationControlHandle : public QObject, public IControlLifecycleObserver
{
    Q_OBJECT

public:
    /// Reaches the SDK's controller through `control`.
    explicit SdkCalibrationControlHandle(
        ReacquiringControl<sdk::service::calibrations::ICalibrationController> control);
    SdkCalibrationControlHandle(const SdkCalibrationControlHandle&) = delete;
    SdkCalibrationControlHandle& operator=(const SdkCalibrationControlHandle&) = delete;
    ~SdkCalibrationControlHandle() override;

    /// The controller, which lives at least as long as the result; empty when the instrument does not offer it. Not to
    /// be kept over a release: as long as it is, this object and its watchers stay with that controller. What the
    /// instrument throws passes through.
    sdk::ControlHandle<sdk::service::calibrations::ICalibrationController>::Locked lock() const;

    void onControlsAboutToBeReleased() override;
    void onControlsAvailable() override;

Q_SIGNALS:
    /// The application announced that the controls go; a controller that was there is still there.
    void controlsAboutToBeReleased();
    /// The application announced that the controls can be obtained; `lock()` may still be empty.
    void controlsAvailable();

private:
    ReacquiringControl<sdk::service::calibrations::ICalibrationController> m_control;
};

} // namespace tov::devices::service

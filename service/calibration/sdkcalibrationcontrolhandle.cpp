#include "service/calibration/sdkcalibrationcontrolhandle.h"

#include <utility>

namespace tov::devices::service {

using sdk::service::calibrations::ICalibrationController;

SdkCalibrationControlHandle::SdkCalibrationControlHandle(ReacquiringControl<ICalibrationController> control)
    : m_control(std::move(control))
{
}

SdkCalibrationControlHandle::~SdkCalibrationControlHandle() = default;

sdk::ControlHandle<ICalibrationController>::Locked SdkCalibrationControlHandle::lock() const
{
    return m_control.lock();
}

void SdkCalibrationControlHandle::onControlsAboutToBeReleased()
{
    emit controlsAboutToBeReleased();
}

void SdkCalibrationControlHandle::onControlsAvailable()
{
    emit controlsAvailable();
}

} // namespace tov::devices::service

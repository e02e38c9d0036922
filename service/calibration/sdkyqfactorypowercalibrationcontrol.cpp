#include "service/calibration/sdkyqfactorypowercalibrationcontrol.h"

#include "service/calibration/calibrationobserveradapter.h"
#include "service/calibration/readfrequencyplan.h"
#include "service/support/observertable.h"

#include <utility>

namespace tov::devices::service {

using ISdkControl = sdk::service::IYqFactoryPowerCalibrationControl;

class SdkYqFactoryPowerCalibrationControl::SdkObserverAdapter final
    : public Registration<CalibrationObserverAdapter<ISdkControl::Observer, Observer>>
{
    using Registration::Registration;
};

auto SdkYqFactoryPowerCalibrationControl::observers()
{
    return ObserverTable<ISdkControl, Observer, SdkObserverAdapter>(m_control, m_mutex, m_observers);
}

SdkYqFactoryPowerCalibrationControl::SdkYqFactoryPowerCalibrationControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

SdkYqFactoryPowerCalibrationControl::~SdkYqFactoryPowerCalibrationControl() = default;

SdkYqFactoryPowerCalibrationControl::FrequencyPlan SdkYqFactoryPowerCalibrationControl::frequencyPlan() const
{
    return readFrequencyPlan<FrequencyPlan>(m_control);
}

// NOLINTBEGIN(performance-unnecessary-value-param): taken by value like the other calibration's data
void SdkYqFactoryPowerCalibrationControl::saveCalibrationData(std::chrono::sys_seconds time, double parameter,
                                                              std::vector<PowerCalPoint> points)
// NOLINTEND(performance-unnecessary-value-param)
{
    if (const auto locked = m_control.lock())
        locked->saveCalibrationData(time, parameter, convertList(points, [](const PowerCalPoint& point) {
                                        return ISdkControl::PowerCalPoint{point.value1, point.value2, point.value3,
                                                                          point.value4, point.value5, point.value6,
                                                                          point.value7, point.value8, point.value9};
                                    }));
}

void SdkYqFactoryPowerCalibrationControl::addObserver(Observer* observer)
{
    observers().add(observer);
}

void SdkYqFactoryPowerCalibrationControl::removeObserver(Observer* observer)
{
    observers().remove(observer);
}

void SdkYqFactoryPowerCalibrationControl::onControlsAboutToBeReleased()
{
    observers().detachAll();
}

void SdkYqFactoryPowerCalibrationControl::onControlsAvailable()
{
    observers().attachAll();
}

} // namespace tov::devices::service

#include "service/calibration/sdkyqifswcalibrationcontrol.h"

#include "service/calibration/calibrationobserveradapter.h"
#include "service/calibration/readfrequencyplan.h"
#include "service/support/observertable.h"

#include <algorithm>
#include <utility>

namespace tov::devices::service {

using ISdkControl = sdk::service::IYqIfswCalibrationControl;

namespace {

using Adapter = SdkYqIfswCalibrationControl;

std::vector<ISdkControl::CalibrationRecord> toSdk(const std::vector<Adapter::IfswCalibrationRecord>& records)
{
    return convertList(records, [](const Adapter::IfswCalibrationRecord& record) {
        return ISdkControl::CalibrationRecord{record.value1, record.value2, record.value3};
    });
}

// Releases the group before it returns, so that there is never more than one group twice.
ISdkControl::CalibrationGroup takeToSdk(Adapter::IfswCalibrationGroup& group)
{
    const auto source = std::exchange(group, {});
    ISdkControl::CalibrationGroup converted;
    converted.second = toSdk(source.second);
    converted.first = toSdk(source.first);
    return converted;
}

} // namespace

class SdkYqIfswCalibrationControl::SdkObserverAdapter final
    : public Registration<CalibrationObserverAdapter<ISdkControl::Observer, Observer>>
{
    using Registration::Registration;
};

auto SdkYqIfswCalibrationControl::observers()
{
    return ObserverTable<ISdkControl, Observer, SdkObserverAdapter>(m_control, m_mutex, m_observers);
}

SdkYqIfswCalibrationControl::SdkYqIfswCalibrationControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

SdkYqIfswCalibrationControl::~SdkYqIfswCalibrationControl() = default;

SdkYqIfswCalibrationControl::FrequencyPlan SdkYqIfswCalibrationControl::frequencyPlan() const
{
    return readFrequencyPlan<FrequencyPlan>(m_control);
}

void SdkYqIfswCalibrationControl::saveCalibrationData(IfswCalibrationData data)
{
    if (const auto locked = m_control.lock()) {
        ISdkControl::CalibrationData sdkData;
        sdkData.values = std::move(data.values);
        std::ranges::transform(data.groups, sdkData.groups.begin(), takeToSdk);
        locked->saveCalibrationData(std::move(sdkData));
    }
}

void SdkYqIfswCalibrationControl::addObserver(Observer* observer)
{
    observers().add(observer);
}

void SdkYqIfswCalibrationControl::removeObserver(Observer* observer)
{
    observers().remove(observer);
}

void SdkYqIfswCalibrationControl::onControlsAboutToBeReleased()
{
    observers().detachAll();
}

void SdkYqIfswCalibrationControl::onControlsAvailable()
{
    observers().attachAll();
}

} // namespace tov::devices::service

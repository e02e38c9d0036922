#include "service/calibration/sdkcalibrationcontrolwatcher.h"

#include "service/calibration/sdkcalibrationcontrolhandle.h"
#include "service/support/callforwarding.h"

#include <cstdint>

namespace tov::devices::service {

using sdk::service::calibrations::ICalibrationController;

namespace {

// The product may wrap, and the low 32 bits are what goes out: receivers know both.
int toPercent(const ICalibrationController::SaveProgress& progress)
{
    return progress.total == 0 ? 0 : static_cast<int>(static_cast<std::uint32_t>(progress.done * 100 / progress.total));
}

} // namespace

class SdkCalibrationControlWatcher::SdkObserver final : public ICalibrationController::Observer
{
public:
    explicit SdkObserver(SdkCalibrationControlWatcher* watcher)
        : m_watcher(watcher)
    {
    }

    void onUnitStatusChanged() override { emit m_watcher->unitStatusChanged(); }
    void onSaveProgress(int /*save*/, const ICalibrationController::SaveProgress& progress) override
    {
        emit m_watcher->saveProgressChanged(toPercent(progress));
    }
    void onConfigurationChanged() override { emit m_watcher->configurationChanged(); }

private:
    SdkCalibrationControlWatcher* const m_watcher;
};

SdkCalibrationControlWatcher::SdkCalibrationControlWatcher(SdkCalibrationControlHandle& handle, QObject* parent)
    : QObject(parent)
    , m_handle(handle)
    , m_observer(std::make_unique<SdkObserver>(this))
{
    connect(&m_handle, &SdkCalibrationControlHandle::controlsAvailable, this, [this] {
        attach();
        emit unitStatusChanged();
        emit configurationChanged();
    });
    connect(&m_handle, &SdkCalibrationControlHandle::controlsAboutToBeReleased, this, [this] { detach(); });
    attach();
}

// An announcement while the SDK lets go of the observer must not attach it again.
SdkCalibrationControlWatcher::~SdkCalibrationControlWatcher()
{
    disconnect(&m_handle, nullptr, this, nullptr);
    detachForEver(m_handle, m_observer.get());
}

// Removing first makes it harmless to attach again.
void SdkCalibrationControlWatcher::attach()
{
    if (const auto controller = m_handle.lock()) {
        controller->removeObserver(m_observer.get());
        controller->addObserver(m_observer.get());
    }
}

void SdkCalibrationControlWatcher::detach()
{
    if (const auto controller = m_handle.lock())
        controller->removeObserver(m_observer.get());
}

} // namespace tov::devices::service

#pragma once

#include "service/devicesservice_export.h"

#include <QObject>

#include <memory>

namespace tov::devices::service {

class SdkCalibrationControlHandle;

/// Follows a calibration controller by signals, also when the instrument takes it away and offers it again.
///
/// Thread: made and destroyed in one thread, which need not be the one that calls the handle's lifecycle operations.
/// What the SDK throws when it is told of the watcher passes through its constructor; later it must not throw then.
class DEVICESSERVICE_EXPORT SdkCalibrationControlWatcher : public QObject
{
    Q_OBJECT

public:
    /// Follows the controller of `handle`, which must outlive the watcher.
    explicit SdkCalibrationControlWatcher(SdkCalibrationControlHandle& handle, QObject* parent = nullptr);
    SdkCalibrationControlWatcher(const SdkCalibrationControlWatcher&) = delete;
    SdkCalibrationControlWatcher& operator=(const SdkCalibrationControlWatcher&) = delete;

    /// Detaches from the controller, if the instrument offers it.
    ~SdkCalibrationControlWatcher() override;

signals:
    /// The status of the calibration unit must be read again. Emitted on the *SDK's notification thread*, and in
    /// the watcher's thread when the controller was offered again.
    void unitStatusChanged();

    /// A save has come so far; 0 as long as nobody knows how much there is to do. Emitted on the *SDK's
    /// notification thread*. Not limited to 100.
    void saveProgressChanged(int percent);

    /// The configuration must be read again. Emitted like `unitStatusChanged()`.
    void configurationChanged();

private:
    class DEVICESSERVICE_NO_EXPORT SdkObserver;

    void attach();
    void detach();
    void tryDetach() noexcept;

    SdkCalibrationControlHandle& m_handle;
    std::unique_ptr<SdkObserver> m_observer;
};

} // namespace tov::devices::service

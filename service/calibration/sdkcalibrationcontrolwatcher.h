#pragma once

#include "service/devicesservice_export.h"

#include <QObject>

#include <memory>

namespace tov::devices::service {

class SdkCalibrationControlHandle;

/// Follows a calibration controller by signals, also when the instrument takes it away and offers it again.
///
/// Thread: made and destroyed in one thread. If that is not the one that calls the handle's lifecycle operations, it
/// needs an event loop, and the watcher lets go of a controller only when that runs, maybe after the release.
/// What the SDK throws when it is told of the watcher passes through its constructor; later it must not throw then.
class DEVICESSERVICE_EXPORT SdkCalibrationControlWatcher : public QObject
{
    Q_OBJECT

public:
    /// Follows the controller of `handle`, which must outlive the watcher.
    explicit SdkCalibrationControlWatcher(SdkCalibrationControlHandle& handle, QObject* parent = nullptr);
    SdkCalibrationControlWatcher(const SdkCalibrationControlWatcher&) = delete;
    SdkCalibrationControlWatcher& operator=(const SdkCalibrationControlWatcher&) = delete;

    /// Detaches from the controller, if the instrument offers it; should that throw, the program ends.
    ~SdkCalibrationControlWatcher() override;

Q_SIGNALS:
    /// The status of the calibration unit must be read again. Emitted on the *SDK's notification thread*, and in
    /// the watcher's thread when the controls were announced, even if this controller is absent.
    void unitStatusChanged();

    /// How far a save has come, in percent without the fraction; 0 when the instrument gives no total. Not limited to
    /// 100: the instrument's figures are multiplied in 64 bits and the low 32 bits of the quotient sent, so very large
    /// figures give wrong and also negative numbers. Emitted on the *SDK's notification thread*.
    void saveProgressChanged(int percent);

    /// The configuration must be read again. Emitted like `unitStatusChanged()`.
    void configurationChanged();

private:
    class DEVICESSERVICE_NO_EXPORT SdkObserver;

    void attach();
    void detach();

    SdkCalibrationControlHandle& m_handle;
    std::unique_ptr<SdkObserver> m_observer;
};

} // namespace tov::devices::service

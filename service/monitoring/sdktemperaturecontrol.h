#pragma once

#include "devices/icontrollifecycleobserver.h"
#include "devices/reacquiringcontrol.h"
#include "sdk/itemperaturecontrol.h"
#include "service/devicesservice_export.h"

#include <QObject>
#include <QString>

#include <memory>
#include <mutex>
#include <vector>

namespace tov::devices::service {

/// The last known temperatures of the instrument and of its modules, in the SDK's unit, unscaled.
///
/// They are read on construction, when the instrument's controls come and when it notifies, and the last are kept when
/// the controls go. Only before the control was ever there are they 0.0 and an empty list. Each call gives one reading
/// whole; two calls may give two different ones.
///
/// Thread: *any thread* for the readings, which never wait for the instrument; the lifecycle operations in the *owner's
/// thread*.
class DEVICESSERVICE_EXPORT SdkTemperatureControl : public QObject, public IControlLifecycleObserver
{
    Q_OBJECT

public:
    /// The temperature of one module.
    struct ModuleTemperature
    {
        QString name;             ///< as the SDK names the module
        double temperature = 0.0; ///< in the SDK's unit, unscaled
    };

    /// Observes the SDK's control and reads the temperatures, if the control is there. Has no parent and emits nothing;
    /// what the SDK throws passes through.
    explicit SdkTemperatureControl(ReacquiringControl<sdk::ITemperatureControl> control);

    SdkTemperatureControl(const SdkTemperatureControl&) = delete;
    SdkTemperatureControl& operator=(const SdkTemperatureControl&) = delete;

    /// Detaches from the control, if the instrument offers it; should that throw, the program ends.
    ~SdkTemperatureControl() override;

    /// The overall temperature.
    double temperature() const;

    /// The temperature of each module, by the modules' names in the order of their UTF-16 code units.
    std::vector<ModuleTemperature> modulesTemperature() const;

    void onControlsAboutToBeReleased() override;

    /// Emits `temperaturesChanged()` also when the control is still absent and nothing has changed.
    void onControlsAvailable() override;

Q_SIGNALS:
    /// The temperatures may have changed: the instrument told so, or its controls were announced. Emitted on the *SDK's
    /// notification thread*, and in the thread that calls `onControlsAvailable()`.
    void temperaturesChanged();

private:
    class DEVICESSERVICE_NO_EXPORT SdkObserverAdapter;

    void attachAdapter();
    void detachAdapter();
    void onSdkTemperatureChanged();
    void refreshSnapshot();

    ReacquiringControl<sdk::ITemperatureControl> m_control;
    std::unique_ptr<SdkObserverAdapter> m_adapter;

    mutable std::mutex m_mutex; // guards all below
    std::vector<ModuleTemperature> m_modules;
    double m_temperature = 0.0;
};

} // namespace tov::devices::service

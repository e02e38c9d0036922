#pragma once

#include "devices/icontrollifecycleobserver.h"
#include "devices/reacquiringcontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "service/devicesservice_export.h"
#include "service/memory/iserialnumbercontrol.h"

#include <memory>

namespace tov::devices::service {

/// The serial number, reached through the SDK.
///
/// Observers of the application stay when the SDK's control goes; they are told again after
/// `onControlsAvailable()`.
///
/// Thread: as its interface says; the lifecycle operations in the *owner's thread*.
class DEVICESSERVICE_EXPORT SdkSerialNumberControl : public ISerialNumberControl, public IControlLifecycleObserver
{
public:
    /// Observes the SDK's control that `control` lends; if there is none, `onControlsAvailable()` does. What the SDK
    /// throws passes through.
    explicit SdkSerialNumberControl(ReacquiringControl<sdk::service::IMemorySerialNumberControl> control);

    SdkSerialNumberControl(const SdkSerialNumberControl&) = delete;
    SdkSerialNumberControl& operator=(const SdkSerialNumberControl&) = delete;

    /// Detaches itself from the SDK; should that throw, the program ends. The application's observers are not told.
    ~SdkSerialNumberControl() override;

    std::expected<unsigned int, Error> serialNumber() const override;
    std::expected<void, Error> writeSerialNumber(unsigned int serialNumber) override;
    void addObserver(Observer* observer) override;
    void removeObserver(Observer* observer) override;

    void onControlsAboutToBeReleased() override;
    void onControlsAvailable() override;

private:
    class DEVICESSERVICE_NO_EXPORT SdkControlObserver;

    ReacquiringControl<sdk::service::IMemorySerialNumberControl> m_control;
    std::unique_ptr<SdkControlObserver> m_observer;
};

} // namespace tov::devices::service

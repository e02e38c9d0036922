#pragma once

#include "devices/icontrollifecycleobserver.h"
#include "devices/reacquiringcontrol.h"
#include "sdk/service/imemoryoperationscontrol.h"
#include "service/devicesservice_export.h"
#include "service/memory/imemoryoperationscontrol.h"

#include <memory>

namespace tov::devices::service {

/// Whole-memory operations, reached through the SDK.
///
/// Observers of the application stay when the SDK's control goes; they are told again after
/// `onControlsAvailable()`.
///
/// Thread: as its interface says; the lifecycle operations in the *owner's thread*.
class DEVICESSERVICE_EXPORT SdkMemoryOperationsControl : public IMemoryOperationsControl,
                                                         public IControlLifecycleObserver
{
public:
    /// Observes the SDK's control that `control` lends; if there is none, `onControlsAvailable()` does. What the SDK
    /// throws passes through.
    explicit SdkMemoryOperationsControl(ReacquiringControl<sdk::service::IMemoryOperationsControl> control);

    SdkMemoryOperationsControl(const SdkMemoryOperationsControl&) = delete;
    SdkMemoryOperationsControl& operator=(const SdkMemoryOperationsControl&) = delete;

    /// Detaches itself from the SDK; should that throw, the program ends. The application's observers are not told.
    ~SdkMemoryOperationsControl() override;

    std::expected<std::vector<std::byte>, Error> read() override;
    std::expected<void, Error> write(const std::vector<std::byte>& data) override;
    std::expected<void, Error> erase() override;
    std::expected<void, Error> integrityCheck() override;
    void addObserver(IObserver* observer) override;
    void removeObserver(IObserver* observer) override;

    void onControlsAboutToBeReleased() override;
    void onControlsAvailable() override;

private:
    class DEVICESSERVICE_NO_EXPORT SdkMemoryOperationsObserver;

    ReacquiringControl<sdk::service::IMemoryOperationsControl> m_control;
    std::unique_ptr<SdkMemoryOperationsObserver> m_observer;
};

} // namespace tov::devices::service

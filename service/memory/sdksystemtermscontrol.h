#pragma once

#include "devices/icontrollifecycleobserver.h"
#include "devices/reacquiringcontrol.h"
#include "sdk/service/isystemtermscontrol.h"
#include "service/devicesservice_export.h"
#include "service/memory/isystemtermscontrol.h"

#include <memory>

namespace tov::devices::service {

/// The stored system error terms, reached through the SDK.
///
/// Observers of the application stay when the SDK's control goes; they are told again after
/// `onControlsAvailable()`.
///
/// Thread: as its interface says; the lifecycle operations in the *owner's thread*.
class DEVICESSERVICE_EXPORT SdkSystemTermsControl : public ISystemTermsControl, public IControlLifecycleObserver
{
public:
    /// Observes the SDK's control that `control` lends; if there is none, `onControlsAvailable()` does. What the SDK
    /// throws passes through.
    explicit SdkSystemTermsControl(ReacquiringControl<sdk::service::ISystemTermsControl> control);

    SdkSystemTermsControl(const SdkSystemTermsControl&) = delete;
    SdkSystemTermsControl& operator=(const SdkSystemTermsControl&) = delete;

    /// Detaches itself from the SDK; should that throw, the program ends. The application's observers are not told.
    ~SdkSystemTermsControl() override;

    std::vector<TermsRecord> termsRecords() override;
    void writeSystemTerms(QDateTime time, double parameter, std::vector<TermsRecord> records,
                          const vna::ErrorTerms& terms) override;
    void writeSystemTerms(QDateTime time, double parameter, const vna::ErrorTerms& terms) override;
    bool systemTermsFlag() override;
    void addObserver(Observer* observer) override;
    void removeObserver(Observer* observer) override;

    void onControlsAboutToBeReleased() override;
    void onControlsAvailable() override;

private:
    class DEVICESSERVICE_NO_EXPORT Listener;

    ReacquiringControl<sdk::service::ISystemTermsControl> m_control;
    std::unique_ptr<Listener> m_listener;
};

} // namespace tov::devices::service

#include "service/tuning/sdkloleakagecontrol.h"

#include "service/support/callforwarding.h"

#include <utility>

namespace tov::devices::service {

using ISdkControl = sdk::service::ILoLeakageControl;

SdkLoLeakageControl::SdkLoLeakageControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

SdkLoLeakageControl::SdkLoLeakageControl(const SdkLoLeakageControl& other) = default;

// Copies, so that a moved-from adapter still finds its control.
SdkLoLeakageControl::SdkLoLeakageControl(SdkLoLeakageControl&& other)
    : SdkLoLeakageControl(std::as_const(other))
{
}

SdkLoLeakageControl::~SdkLoLeakageControl() = default;

bool SdkLoLeakageControl::isEnabled() const
{
    return read(m_control, false, &ISdkControl::isEnabled);
}

void SdkLoLeakageControl::setEnabled(bool enabled)
{
    write(m_control, &ISdkControl::setEnabled, enabled);
}

} // namespace tov::devices::service

#include "service/tuning/sdkyqsynthesiscontrol.h"

#include "service/support/callforwarding.h"

#include <utility>

namespace tov::devices::service {

using ISdkControl = sdk::service::IYqSynthesisControl;

SdkYqSynthesisControl::SdkYqSynthesisControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

SdkYqSynthesisControl::SdkYqSynthesisControl(const SdkYqSynthesisControl& other) = default;

// Copies, so that a moved-from adapter still finds its control.
SdkYqSynthesisControl::SdkYqSynthesisControl(SdkYqSynthesisControl&& other)
    : SdkYqSynthesisControl(std::as_const(other))
{
}

SdkYqSynthesisControl::~SdkYqSynthesisControl() = default;

bool SdkYqSynthesisControl::manualIfEnabled() const
{
    return read(m_control, false, &ISdkControl::manualIfEnabled);
}

void SdkYqSynthesisControl::enableManualIf(bool enabled)
{
    write(m_control, &ISdkControl::enableManualIf, enabled);
}

int SdkYqSynthesisControl::selectedIf() const
{
    // -1 and not 0, which is an index: intended.
    return read(m_control, -1, &ISdkControl::selectedIf);
}

void SdkYqSynthesisControl::setSelectedIf(int index)
{
    write(m_control, &ISdkControl::setSelectedIf, index);
}

std::vector<double> SdkYqSynthesisControl::supportedIfs() const
{
    return readList(m_control, &ISdkControl::supportedIfs);
}

} // namespace tov::devices::service

#include "service/tuning/sdkkz515synthesiscontrol.h"

#include "service/support/callforwarding.h"

#include <utility>

namespace tov::devices::service {

using ISdkControl = sdk::service::IKZ515SynthesisControl;

SdkKz515SynthesisControl::SdkKz515SynthesisControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

SdkKz515SynthesisControl::SdkKz515SynthesisControl(const SdkKz515SynthesisControl& other) = default;

// Copies, so that a moved-from adapter still finds its control.
SdkKz515SynthesisControl::SdkKz515SynthesisControl(SdkKz515SynthesisControl&& other)
    : SdkKz515SynthesisControl(std::as_const(other))
{
}

SdkKz515SynthesisControl::~SdkKz515SynthesisControl() = default;

std::vector<double> SdkKz515SynthesisControl::availableReferenceFrequencies() const
{
    return read(m_control, {}, &ISdkControl::availableReferenceFrequencies);
}

double SdkKz515SynthesisControl::currentReferenceFrequency() const
{
    return read(m_control, 0.0, &ISdkControl::currentReferenceFrequency);
}

void SdkKz515SynthesisControl::setReferenceFrequency(double frequency)
{
    write(m_control, &ISdkControl::setReferenceFrequency, frequency);
}

} // namespace tov::devices::service

#include "service/tuning/sdkulksynthesiscontrol.h"

#include "service/support/callforwarding.h"

#include <utility>

namespace tov::devices::service {

using ISdkControl = sdk::service::IUlkSynthesisControl;

SdkUlkSynthesisControl::SdkUlkSynthesisControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

SdkUlkSynthesisControl::SdkUlkSynthesisControl(const SdkUlkSynthesisControl& other) = default;

// Copies, so that a moved-from adapter still finds its control.
SdkUlkSynthesisControl::SdkUlkSynthesisControl(SdkUlkSynthesisControl&& other)
    : SdkUlkSynthesisControl(std::as_const(other))
{
}

SdkUlkSynthesisControl::~SdkUlkSynthesisControl() = default;

bool SdkUlkSynthesisControl::loLeakageMode() const
{
    return read(m_control, false, &ISdkControl::loLeakageMode);
}

void SdkUlkSynthesisControl::setLoLeakageMode(bool on)
{
    write(m_control, &ISdkControl::setLoLeakageMode, on);
}

bool SdkUlkSynthesisControl::manualIfEnabled() const
{
    return read(m_control, false, &ISdkControl::manualIfEnabled);
}

void SdkUlkSynthesisControl::enableManualIf(bool enabled)
{
    write(m_control, &ISdkControl::enableManualIf, enabled);
}

int SdkUlkSynthesisControl::selectedIf() const
{
    return read(m_control, 0, &ISdkControl::selectedIf);
}

void SdkUlkSynthesisControl::setSelectedIf(int index)
{
    write(m_control, &ISdkControl::setSelectedIf, index);
}

std::vector<double> SdkUlkSynthesisControl::supportedIfs() const
{
    return readList(m_control, &ISdkControl::supportedIfs);
}

double SdkUlkSynthesisControl::filter1Frequency() const
{
    return read(m_control, 0.0, &ISdkControl::filter1Frequency);
}

void SdkUlkSynthesisControl::setFilter1Frequency(double frequency)
{
    write(m_control, &ISdkControl::setFilter1Frequency, frequency);
}

bool SdkUlkSynthesisControl::manualRefEnabled() const
{
    return read(m_control, false, &ISdkControl::manualRefEnabled);
}

void SdkUlkSynthesisControl::enableManualRef(bool enabled)
{
    write(m_control, &ISdkControl::enableManualRef, enabled);
}

int SdkUlkSynthesisControl::selectedRef() const
{
    return read(m_control, 0, &ISdkControl::selectedRef);
}

void SdkUlkSynthesisControl::setSelectedRef(int index)
{
    write(m_control, &ISdkControl::setSelectedRef, index);
}

std::vector<double> SdkUlkSynthesisControl::supportedRefs() const
{
    return readList(m_control, &ISdkControl::supportedRefs);
}

void SdkUlkSynthesisControl::reset()
{
    write(m_control, &ISdkControl::reset);
}

} // namespace tov::devices::service

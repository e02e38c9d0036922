#include "service/tuning/sdkwn0807powercontrol.h"

#include "service/support/callforwarding.h"
#include "service/support/enumerationmap.h"

#include <utility>

namespace tov::devices::service {

using ISdkControl = sdk::service::IWn0807PowerModuleControl;

namespace {

using DacMode = SdkWn0807PowerControl::DacMode;
using PowerMode = SdkWn0807PowerControl::PowerMode;
using StepAttenuatorMode = SdkWn0807PowerControl::StepAttenuatorMode;
using DiscreteAttenuatorMode = SdkWn0807PowerControl::DiscreteAttenuatorMode;
using PowerConstant = SdkWn0807PowerControl::PowerConstant;
using DdsCorrectionMode = SdkWn0807PowerControl::DdsCorrectionMode;

constexpr auto dacModes = sameNumbers<4>(DacMode::Mode3);
constexpr auto powerModes = sameNumbers<2>(PowerMode::Mode1);
// The last two are crossed: intended.
constexpr EnumerationMap<StepAttenuatorMode, 5> stepAttenuatorModes{
    .pairs = {{{StepAttenuatorMode::Mode0, 0},
               {StepAttenuatorMode::Mode1, 1},
               {StepAttenuatorMode::Mode2, 2},
               {StepAttenuatorMode::Mode3, 4},
               {StepAttenuatorMode::Mode4, 3}}},
    .unknownFromSdk = StepAttenuatorMode::Mode3,
    .unknownToSdk = 3,
};
constexpr auto discreteAttenuatorModes = sameNumbers<3>(DiscreteAttenuatorMode::Mode2);
constexpr auto powerConstants = sameNumbers<3>(PowerConstant::Constant2);
constexpr auto ddsCorrectionModes = sameNumbers<2>(DdsCorrectionMode::Mode1);

} // namespace

SdkWn0807PowerControl::SdkWn0807PowerControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

SdkWn0807PowerControl::SdkWn0807PowerControl(const SdkWn0807PowerControl& other) = default;

// Copies, so that a moved-from adapter still finds its control.
SdkWn0807PowerControl::SdkWn0807PowerControl(SdkWn0807PowerControl&& other)
    : SdkWn0807PowerControl(std::as_const(other))
{
}

SdkWn0807PowerControl::~SdkWn0807PowerControl() = default;

SdkWn0807PowerControl::DacMode SdkWn0807PowerControl::dacMode() const
{
    return readEnumeration(m_control, dacModes, &ISdkControl::dacMode);
}

void SdkWn0807PowerControl::setDacMode(DacMode mode)
{
    write(m_control, &ISdkControl::setDacMode, dacModes.toSdk(mode));
}

SdkWn0807PowerControl::PowerMode SdkWn0807PowerControl::powerMode() const
{
    return readEnumeration(m_control, powerModes, &ISdkControl::powerMode);
}

void SdkWn0807PowerControl::setPowerMode(PowerMode mode)
{
    write(m_control, &ISdkControl::setPowerMode, powerModes.toSdk(mode));
}

SdkWn0807PowerControl::StepAttenuatorMode SdkWn0807PowerControl::stepAttenuatorMode() const
{
    return readEnumeration(m_control, stepAttenuatorModes, &ISdkControl::stepAttenuatorMode);
}

void SdkWn0807PowerControl::setStepAttenuatorMode(StepAttenuatorMode mode)
{
    write(m_control, &ISdkControl::setStepAttenuatorMode, stepAttenuatorModes.toSdk(mode));
}

SdkWn0807PowerControl::DiscreteAttenuatorMode SdkWn0807PowerControl::discreteAttenuatorMode() const
{
    return readEnumeration(m_control, discreteAttenuatorModes, &ISdkControl::discreteAttenuatorMode);
}

void SdkWn0807PowerControl::setDiscreteAttenuatorMode(DiscreteAttenuatorMode mode)
{
    write(m_control, &ISdkControl::setDiscreteAttenuatorMode, discreteAttenuatorModes.toSdk(mode));
}

SdkWn0807PowerControl::PowerConstant SdkWn0807PowerControl::powerConstant() const
{
    return readEnumeration(m_control, powerConstants, &ISdkControl::powerConstant);
}

void SdkWn0807PowerControl::setPowerConstant(PowerConstant constant)
{
    write(m_control, &ISdkControl::setPowerConstant, powerConstants.toSdk(constant));
}

unsigned short SdkWn0807PowerControl::rfDac() const
{
    return read(m_control, 0, &ISdkControl::rfDac);
}

void SdkWn0807PowerControl::setRfDac(unsigned short word)
{
    write(m_control, &ISdkControl::setRfDac, word);
}

unsigned short SdkWn0807PowerControl::splitDac() const
{
    return read(m_control, 0, &ISdkControl::splitDac);
}

void SdkWn0807PowerControl::setSplitDac(unsigned short word)
{
    write(m_control, &ISdkControl::setSplitDac, word);
}

unsigned short SdkWn0807PowerControl::splitDds() const
{
    return read(m_control, 0, &ISdkControl::splitDds);
}

void SdkWn0807PowerControl::setSplitDds(unsigned short word)
{
    write(m_control, &ISdkControl::setSplitDds, word);
}

double SdkWn0807PowerControl::attenuationDb() const
{
    return read(m_control, 0.0, &ISdkControl::attenuationDb);
}

void SdkWn0807PowerControl::setAttenuationDb(double attenuation)
{
    write(m_control, &ISdkControl::setAttenuationDb, attenuation);
}

unsigned short SdkWn0807PowerControl::attenuationStep() const
{
    return read(m_control, 0, &ISdkControl::attenuationStep);
}

void SdkWn0807PowerControl::setAttenuationStep(unsigned short step)
{
    write(m_control, &ISdkControl::setAttenuationStep, step);
}

bool SdkWn0807PowerControl::discreteAttenuatorEnabled() const
{
    return read(m_control, false, &ISdkControl::discreteAttenuatorEnabled);
}

void SdkWn0807PowerControl::enableDiscreteAttenuator(bool enabled)
{
    write(m_control, &ISdkControl::enableDiscreteAttenuator, enabled);
}

double SdkWn0807PowerControl::squarePatternStep() const
{
    return read(m_control, 0.0, &ISdkControl::squarePatternStep);
}

void SdkWn0807PowerControl::setSquarePatternStep(double step)
{
    write(m_control, &ISdkControl::setSquarePatternStep, step);
}

SdkWn0807PowerControl::DdsCorrectionMode SdkWn0807PowerControl::ddsCorrectionMode() const
{
    return readEnumeration(m_control, ddsCorrectionModes, &ISdkControl::ddsCorrectionMode);
}

void SdkWn0807PowerControl::setDdsCorrectionMode(DdsCorrectionMode mode)
{
    write(m_control, &ISdkControl::setDdsCorrectionMode, ddsCorrectionModes.toSdk(mode));
}

bool SdkWn0807PowerControl::ddsCorrectionEnabled() const
{
    return read(m_control, false, &ISdkControl::ddsCorrectionEnabled);
}

void SdkWn0807PowerControl::enableDdsCorrection(bool enabled)
{
    write(m_control, &ISdkControl::enableDdsCorrection, enabled);
}

void SdkWn0807PowerControl::assignPowerCalibrationTable(std::vector<unsigned char> table)
{
    write(m_control, &ISdkControl::assignPowerCalibrationTable, std::move(table));
}

} // namespace tov::devices::service

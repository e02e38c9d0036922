#include "service/tuning/sdkwn0807synthesiscontrol.h"

#include "service/support/callforwarding.h"
#include "service/support/enumerationmap.h"

#include <utility>

namespace tov::devices::service {

using ISdkControl = sdk::service::IWn0807SynthesisControl;

namespace {

using Capacitor = SdkWn0807SynthesisControl::Capacitor;
using CapacitorMode = SdkWn0807SynthesisControl::CapacitorMode;
using RfPowerMode = SdkWn0807SynthesisControl::RfPowerMode;
using IfMode = SdkWn0807SynthesisControl::IfMode;
using FilterMode = SdkWn0807SynthesisControl::FilterMode;
using RfFilter = SdkWn0807SynthesisControl::RfFilter;
using DelayMode = SdkWn0807SynthesisControl::DelayMode;
using PowerSyntEntry = SdkWn0807SynthesisControl::PowerSyntEntry;

constexpr auto capacitors = sameNumbers<2>(Capacitor::Capacitor2);
constexpr auto capacitorModes = sameNumbers<4>(CapacitorMode::Mode3);
// Unknown modes fold into the middle one: intended.
constexpr auto rfPowerModes = sameNumbers<3>(RfPowerMode::Mode1);
constexpr auto ifModes = sameNumbers<2>(IfMode::Mode1);
constexpr auto filterModes = sameNumbers<3>(FilterMode::Mode2);
constexpr auto rfFilters = sameNumbers<4>(RfFilter::Filter4);
constexpr auto delayModes = sameNumbers<2>(DelayMode::Mode1);

PowerSyntEntry toEntry(const ISdkControl::PowerSyntEntry& entry)
{
    return {entry.frequency, entry.power};
}

} // namespace

SdkWn0807SynthesisControl::SdkWn0807SynthesisControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

SdkWn0807SynthesisControl::SdkWn0807SynthesisControl(const SdkWn0807SynthesisControl& other) = default;

// Copies, so that a moved-from adapter still finds its control.
SdkWn0807SynthesisControl::SdkWn0807SynthesisControl(SdkWn0807SynthesisControl&& other)
    : SdkWn0807SynthesisControl(std::as_const(other))
{
}

SdkWn0807SynthesisControl::~SdkWn0807SynthesisControl() = default;

unsigned char SdkWn0807SynthesisControl::loPower() const
{
    return read(m_control, 0, &ISdkControl::loPower);
}

void SdkWn0807SynthesisControl::setLoPower(unsigned char power)
{
    write(m_control, &ISdkControl::setLoPower, power);
}

unsigned char SdkWn0807SynthesisControl::rfPower() const
{
    return read(m_control, 0, &ISdkControl::rfPower);
}

void SdkWn0807SynthesisControl::setRfPower(unsigned char power)
{
    write(m_control, &ISdkControl::setRfPower, power);
}

SdkWn0807SynthesisControl::RfPowerMode SdkWn0807SynthesisControl::rfPowerMode() const
{
    return readEnumeration(m_control, rfPowerModes, &ISdkControl::rfPowerMode);
}

void SdkWn0807SynthesisControl::setRfPowerMode(RfPowerMode mode)
{
    write(m_control, &ISdkControl::setRfPowerMode, rfPowerModes.toSdk(mode));
}

std::vector<SdkWn0807SynthesisControl::PowerSyntEntry> SdkWn0807SynthesisControl::rfPowerRangeTable() const
{
    return readConverted(m_control, &ISdkControl::rfPowerRangeTable, toEntry);
}

std::vector<SdkWn0807SynthesisControl::PowerSyntEntry> SdkWn0807SynthesisControl::rfPowerDefaultRangeTable() const
{
    return readConverted(m_control, &ISdkControl::rfPowerDefaultRangeTable, toEntry);
}

void SdkWn0807SynthesisControl::setRfPowerRangeFrequency(int row, double frequency)
{
    write(m_control, &ISdkControl::setRfPowerRangeFrequency, row, frequency);
}

void SdkWn0807SynthesisControl::setRfPowerRangePower(int row, unsigned char power)
{
    write(m_control, &ISdkControl::setRfPowerRangePower, row, power);
}

SdkWn0807SynthesisControl::IfMode SdkWn0807SynthesisControl::ifMode() const
{
    return readEnumeration(m_control, ifModes, &ISdkControl::ifMode);
}

void SdkWn0807SynthesisControl::setIfMode(IfMode mode)
{
    write(m_control, &ISdkControl::setIfMode, ifModes.toSdk(mode));
}

int SdkWn0807SynthesisControl::selectedIf() const
{
    return read(m_control, 0, &ISdkControl::selectedIf);
}

void SdkWn0807SynthesisControl::setSelectedIf(int index)
{
    write(m_control, &ISdkControl::setSelectedIf, index);
}

std::vector<double> SdkWn0807SynthesisControl::supportedIfs() const
{
    return readList(m_control, &ISdkControl::supportedIfs);
}

SdkWn0807SynthesisControl::CapacitorMode SdkWn0807SynthesisControl::capacitanceMode(Capacitor capacitor) const
{
    return readEnumeration(m_control, capacitorModes, &ISdkControl::capacitanceMode, capacitors.toSdk(capacitor));
}

void SdkWn0807SynthesisControl::setCapacitanceMode(Capacitor capacitor, CapacitorMode mode)
{
    write(m_control, &ISdkControl::setCapacitanceMode, capacitors.toSdk(capacitor), capacitorModes.toSdk(mode));
}

std::optional<utils::Range<double>> SdkWn0807SynthesisControl::capacitanceRange(Capacitor capacitor) const
{
    const auto range = read(m_control, std::nullopt, &ISdkControl::capacitanceRange, capacitors.toSdk(capacitor));
    return range ? std::optional(utils::Range<double>{range->first, range->second}) : std::nullopt;
}

void SdkWn0807SynthesisControl::setCapacitanceRange(Capacitor capacitor, const utils::Range<double>& range)
{
    write(m_control, &ISdkControl::setCapacitanceRange, capacitors.toSdk(capacitor),
          ISdkControl::Range{range.first, range.second});
}

SdkWn0807SynthesisControl::FilterMode SdkWn0807SynthesisControl::rfFilterMode() const
{
    return readEnumeration(m_control, filterModes, &ISdkControl::rfFilterMode);
}

void SdkWn0807SynthesisControl::setRfFilterMode(FilterMode mode)
{
    write(m_control, &ISdkControl::setRfFilterMode, filterModes.toSdk(mode));
}

std::optional<SdkWn0807SynthesisControl::RfFilter> SdkWn0807SynthesisControl::selectedRfFilter() const
{
    const auto filter = read(m_control, std::nullopt, &ISdkControl::selectedRfFilter);
    return filter ? std::optional(rfFilters.fromSdk(*filter)) : std::nullopt;
}

void SdkWn0807SynthesisControl::setSelectedRfFilter(RfFilter filter)
{
    write(m_control, &ISdkControl::setSelectedRfFilter, rfFilters.toSdk(filter));
}

std::optional<double> SdkWn0807SynthesisControl::rfFilterFrom(RfFilter filter) const
{
    return read(m_control, std::nullopt, &ISdkControl::rfFilterFrom, rfFilters.toSdk(filter));
}

void SdkWn0807SynthesisControl::setRfFilterFrom(RfFilter filter, double frequency)
{
    write(m_control, &ISdkControl::setRfFilterFrom, rfFilters.toSdk(filter), frequency);
}

double SdkWn0807SynthesisControl::ddsSwitchFreq() const
{
    return read(m_control, 0.0, &ISdkControl::ddsSwitchFreq);
}

void SdkWn0807SynthesisControl::setDdsSwitchFreq(double frequency)
{
    write(m_control, &ISdkControl::setDdsSwitchFreq, frequency);
}

SdkWn0807SynthesisControl::DelayMode SdkWn0807SynthesisControl::delayMode() const
{
    return readEnumeration(m_control, delayModes, &ISdkControl::delayMode);
}

void SdkWn0807SynthesisControl::setDelayMode(DelayMode mode)
{
    write(m_control, &ISdkControl::setDelayMode, delayModes.toSdk(mode));
}

double SdkWn0807SynthesisControl::measureDelay() const
{
    return read(m_control, {}, &ISdkControl::measureDelay).count();
}

void SdkWn0807SynthesisControl::setMeasureDelay(double delay)
{
    write(m_control, &ISdkControl::setMeasureDelay, ISdkControl::Duration(delay));
}

} // namespace tov::devices::service

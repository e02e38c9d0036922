#include "operations/operations.h"
#include "operations/valuerows.h"
#include "service/tuning/sdkwn0807powercontrol.h"
#include "service/tuning/sdkwn0807synthesiscontrol.h"
#include "testing/fakewn0807powermodulecontrol.h"
#include "testing/fakewn0807synthesiscontrol.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace tov::testing {

using namespace devices::service;
using namespace sdk::service;
using Capacitor = SdkWn0807SynthesisControl::Capacitor;
using CapacitorMode = SdkWn0807SynthesisControl::CapacitorMode;
using RfFilter = SdkWn0807SynthesisControl::RfFilter;

namespace {

constexpr std::array frequencies = {7.5e6, 10.7e6, 2.5e6};

constexpr std::array<IWn0807SynthesisControl::PowerSyntEntry, 2> entries = {{{1e9, 17}, {2e9, 255}}};

// Frequencies and powers one after the other.
using Table = std::vector<double>;

auto tableOf(std::vector<SdkWn0807SynthesisControl::PowerSyntEntry> (SdkWn0807SynthesisControl::*getter)() const)
{
    return [getter](const SdkWn0807SynthesisControl& adapter) {
        Table table;
        for (const auto& entry : (adapter.*getter)())
            table.insert(table.end(), {entry.frequency, static_cast<double>(entry.power)});
        return table;
    };
}

Table boundsOf(const std::optional<utils::Range<double>>& range)
{
    return range ? Table{range->first, range->second} : Table{};
}

} // namespace

Rows<SdkWn0807PowerControl> wn0807PowerRows()
{
    return {
        reads("dacMode", &SdkWn0807PowerControl::dacMode, {SdkWn0807PowerControl::DacMode::Mode0}, SdkAnswers{2},
              SdkWn0807PowerControl::DacMode::Mode2),
        writes("setDacMode", &SdkWn0807PowerControl::setDacMode, SdkWn0807PowerControl::DacMode::Mode2)
            .as("setDacMode(2)"),
        reads("powerMode", &SdkWn0807PowerControl::powerMode, {SdkWn0807PowerControl::PowerMode::Mode0}, SdkAnswers{1},
              SdkWn0807PowerControl::PowerMode::Mode1),
        writes("setPowerMode", &SdkWn0807PowerControl::setPowerMode, SdkWn0807PowerControl::PowerMode::Mode1)
            .as("setPowerMode(1)"),
        reads("stepAttenuatorMode", &SdkWn0807PowerControl::stepAttenuatorMode,
              {SdkWn0807PowerControl::StepAttenuatorMode::Mode0}, SdkAnswers{4},
              SdkWn0807PowerControl::StepAttenuatorMode::Mode3),
        writes("setStepAttenuatorMode", &SdkWn0807PowerControl::setStepAttenuatorMode,
               SdkWn0807PowerControl::StepAttenuatorMode::Mode3)
            .as("setStepAttenuatorMode(4)"),
        reads("discreteAttenuatorMode", &SdkWn0807PowerControl::discreteAttenuatorMode,
              {SdkWn0807PowerControl::DiscreteAttenuatorMode::Mode0}, SdkAnswers{1},
              SdkWn0807PowerControl::DiscreteAttenuatorMode::Mode1),
        writes("setDiscreteAttenuatorMode", &SdkWn0807PowerControl::setDiscreteAttenuatorMode,
               SdkWn0807PowerControl::DiscreteAttenuatorMode::Mode1)
            .as("setDiscreteAttenuatorMode(1)"),
        reads("powerConstant", &SdkWn0807PowerControl::powerConstant, {SdkWn0807PowerControl::PowerConstant::Constant0},
              SdkAnswers{1}, SdkWn0807PowerControl::PowerConstant::Constant1),
        writes("setPowerConstant", &SdkWn0807PowerControl::setPowerConstant,
               SdkWn0807PowerControl::PowerConstant::Constant1)
            .as("setPowerConstant(1)"),
        reads("rfDac", &SdkWn0807PowerControl::rfDac, {0}, {40000}),
        writes("setRfDac", &SdkWn0807PowerControl::setRfDac, 65535),
        reads("splitDac", &SdkWn0807PowerControl::splitDac, {0}, {40000}),
        writes("setSplitDac", &SdkWn0807PowerControl::setSplitDac, 65535),
        reads("splitDds", &SdkWn0807PowerControl::splitDds, {0}, {40000}),
        writes("setSplitDds", &SdkWn0807PowerControl::setSplitDds, 65535),
        reads("attenuationDb", &SdkWn0807PowerControl::attenuationDb, {0.0}, {-10.5}),
        writes("setAttenuationDb", &SdkWn0807PowerControl::setAttenuationDb, 0.1),
        reads("attenuationStep", &SdkWn0807PowerControl::attenuationStep, {0}, {40000}),
        writes("setAttenuationStep", &SdkWn0807PowerControl::setAttenuationStep, 65535),
        reads("discreteAttenuatorEnabled", &SdkWn0807PowerControl::discreteAttenuatorEnabled, {false}, {true}),
        writes("enableDiscreteAttenuator", &SdkWn0807PowerControl::enableDiscreteAttenuator, true),
        reads("squarePatternStep", &SdkWn0807PowerControl::squarePatternStep, {0.0}, {0.25}),
        writes("setSquarePatternStep", &SdkWn0807PowerControl::setSquarePatternStep, 1e-3),
        reads("ddsCorrectionMode", &SdkWn0807PowerControl::ddsCorrectionMode,
              {SdkWn0807PowerControl::DdsCorrectionMode::Mode0}, SdkAnswers{1},
              SdkWn0807PowerControl::DdsCorrectionMode::Mode1),
        writes("setDdsCorrectionMode", &SdkWn0807PowerControl::setDdsCorrectionMode,
               SdkWn0807PowerControl::DdsCorrectionMode::Mode1)
            .as("setDdsCorrectionMode(1)"),
        reads("ddsCorrectionEnabled", &SdkWn0807PowerControl::ddsCorrectionEnabled, {false}, {true}),
        writes("enableDdsCorrection", &SdkWn0807PowerControl::enableDdsCorrection, true),
        writes("assignPowerCalibrationTable", &SdkWn0807PowerControl::assignPowerCalibrationTable, {1, 0, 255}),
    };
}

Operations wn0807PowerOperations()
{
    return operations<SdkWn0807PowerControl, IWn0807PowerModuleControl, FakeWn0807PowerModuleControl>(
        wn0807PowerRows());
}

Rows<SdkWn0807SynthesisControl> wn0807SynthesisRows()
{
    return {
        reads("loPower", &SdkWn0807SynthesisControl::loPower, {0}, {200}),
        writes("setLoPower", &SdkWn0807SynthesisControl::setLoPower, 255),
        reads("rfPower", &SdkWn0807SynthesisControl::rfPower, {0}, {7}),
        writes("setRfPower", &SdkWn0807SynthesisControl::setRfPower, 8),
        reads("rfPowerMode", &SdkWn0807SynthesisControl::rfPowerMode, {SdkWn0807SynthesisControl::RfPowerMode::Mode0},
              SdkAnswers{2}, SdkWn0807SynthesisControl::RfPowerMode::Mode2),
        writes("setRfPowerMode", &SdkWn0807SynthesisControl::setRfPowerMode,
               SdkWn0807SynthesisControl::RfPowerMode::Mode2)
            .as("setRfPowerMode(2)"),
        readsBy<SdkWn0807SynthesisControl>(
            "rfPowerRangeTable", tableOf(&SdkWn0807SynthesisControl::rfPowerRangeTable), Table{},
            SdkAnswers{std::span<const IWn0807SynthesisControl::PowerSyntEntry>(entries)},
            Table{1e9, 17.0, 2e9, 255.0}),
        readsBy<SdkWn0807SynthesisControl>(
            "rfPowerDefaultRangeTable", tableOf(&SdkWn0807SynthesisControl::rfPowerDefaultRangeTable), Table{},
            SdkAnswers{std::span<const IWn0807SynthesisControl::PowerSyntEntry>(entries)},
            Table{1e9, 17.0, 2e9, 255.0}),
        writes("setRfPowerRangeFrequency", &SdkWn0807SynthesisControl::setRfPowerRangeFrequency, -3, 1.5e9),
        writes("setRfPowerRangePower", &SdkWn0807SynthesisControl::setRfPowerRangePower, 1000000,
               static_cast<unsigned char>(255)),
        reads("ifMode", &SdkWn0807SynthesisControl::ifMode, {SdkWn0807SynthesisControl::IfMode::Mode0}, SdkAnswers{1},
              SdkWn0807SynthesisControl::IfMode::Mode1),
        writes("setIfMode", &SdkWn0807SynthesisControl::setIfMode, SdkWn0807SynthesisControl::IfMode::Mode1)
            .as("setIfMode(1)"),
        reads("selectedIf", &SdkWn0807SynthesisControl::selectedIf, {0}, {3}),
        writes("setSelectedIf", &SdkWn0807SynthesisControl::setSelectedIf, -7),
        reads("supportedIfs", &SdkWn0807SynthesisControl::supportedIfs, {{}},
              SdkAnswers{std::span<const double>(frequencies)}, {7.5e6, 10.7e6, 2.5e6}),
        readsBy<SdkWn0807SynthesisControl>(
            "capacitanceMode",
            [](const SdkWn0807SynthesisControl& adapter) { return adapter.capacitanceMode(Capacitor::Capacitor2); },
            CapacitorMode::Mode0, SdkAnswers{2}, CapacitorMode::Mode2)
            .as("capacitanceMode(1)"),
        writes("setCapacitanceMode", &SdkWn0807SynthesisControl::setCapacitanceMode, Capacitor::Capacitor2,
               CapacitorMode::Mode3)
            .as("setCapacitanceMode(1, 3)"),
        readsBy<SdkWn0807SynthesisControl>(
            "capacitanceRange",
            [](const SdkWn0807SynthesisControl& adapter) {
                return boundsOf(adapter.capacitanceRange(Capacitor::Capacitor1));
            },
            Table{}, SdkAnswers{std::optional(IWn0807SynthesisControl::Range{5.0, -1.5})}, Table{5.0, -1.5})
            .as("capacitanceRange(0)"),
        writes("setCapacitanceRange", &SdkWn0807SynthesisControl::setCapacitanceRange, Capacitor::Capacitor2,
               utils::Range<double>{2.5, 0.1})
            .as("setCapacitanceRange(1, 2.5, 0.1)"),
        reads("rfFilterMode", &SdkWn0807SynthesisControl::rfFilterMode, {SdkWn0807SynthesisControl::FilterMode::Mode0},
              SdkAnswers{1}, SdkWn0807SynthesisControl::FilterMode::Mode1),
        writes("setRfFilterMode", &SdkWn0807SynthesisControl::setRfFilterMode,
               SdkWn0807SynthesisControl::FilterMode::Mode1)
            .as("setRfFilterMode(1)"),
        reads("selectedRfFilter", &SdkWn0807SynthesisControl::selectedRfFilter, {std::nullopt},
              SdkAnswers{std::optional(2)}, RfFilter::Filter3),
        writes("setSelectedRfFilter", &SdkWn0807SynthesisControl::setSelectedRfFilter, RfFilter::Filter2)
            .as("setSelectedRfFilter(1)"),
        readsBy<SdkWn0807SynthesisControl>(
            "rfFilterFrom",
            [](const SdkWn0807SynthesisControl& adapter) { return adapter.rfFilterFrom(RfFilter::Filter4); },
            std::optional<double>(), SdkAnswers{std::optional(1.5e9)}, std::optional(1.5e9))
            .as("rfFilterFrom(3)"),
        writes("setRfFilterFrom", &SdkWn0807SynthesisControl::setRfFilterFrom, RfFilter::Filter3, 0.1)
            .as("setRfFilterFrom(2, 0.1)"),
        reads("ddsSwitchFreq", &SdkWn0807SynthesisControl::ddsSwitchFreq, {0.0}, {1e8}),
        writes("setDdsSwitchFreq", &SdkWn0807SynthesisControl::setDdsSwitchFreq, -1e-9),
        reads("delayMode", &SdkWn0807SynthesisControl::delayMode, {SdkWn0807SynthesisControl::DelayMode::Mode0},
              SdkAnswers{1}, SdkWn0807SynthesisControl::DelayMode::Mode1),
        writes("setDelayMode", &SdkWn0807SynthesisControl::setDelayMode, SdkWn0807SynthesisControl::DelayMode::Mode1)
            .as("setDelayMode(1)"),
        reads("measureDelay", &SdkWn0807SynthesisControl::measureDelay, {0.0},
              SdkAnswers{IWn0807SynthesisControl::Duration(2.5e-6)}, 2.5e-6),
        writes("setMeasureDelay", &SdkWn0807SynthesisControl::setMeasureDelay, 0.1),
    };
}

Operations wn0807SynthesisOperations()
{
    return operations<SdkWn0807SynthesisControl, IWn0807SynthesisControl, FakeWn0807SynthesisControl>(
        wn0807SynthesisRows());
}

} // namespace tov::testing

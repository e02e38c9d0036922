#include "tools/tuning/tuning.h"

#include "tools/text/named.h"
#include "tools/tuning/describing.h"

#include <utility>

namespace tov::inline tools {

namespace {

namespace controls = host::controls;
using namespace describing;
using namespace devices::service;

TuneModule ulkSynthesis()
{
    using A = SdkUlkSynthesisControl;
    return Module(controls::ulkSynthesis)
        .tunes("lo-leakage-mode", "the LO leakage mode", &A::loLeakageMode, &A::setLoLeakageMode)
        .tunes("manual-if", "whether a manually chosen IF is in force", &A::manualIfEnabled, &A::enableManualIf)
        .tunes("selected-if", "index of the selected IF in supported-ifs", &A::selectedIf, &A::setSelectedIf)
        .within([](const A& adapter) { return TakenNumbers::indices(adapter.supportedIfs().size()); })
        .shows("supported-ifs", "the IFs of the module", &A::supportedIfs)
        .in("Hz")
        .tunes("filter1-frequency", "frequency of the first filter", &A::filter1Frequency, &A::setFilter1Frequency)
        .in("Hz")
        .tunes("manual-ref", "whether a manually chosen reference is in force", &A::manualRefEnabled,
               &A::enableManualRef)
        .tunes("selected-ref", "index of the selected reference in supported-refs", &A::selectedRef, &A::setSelectedRef)
        .within([](const A& adapter) { return TakenNumbers::indices(adapter.supportedRefs().size()); })
        .shows("supported-refs", "the references of the module", &A::supportedRefs)
        .in("Hz")
        .resets();
}

TuneModule ulkPower()
{
    using A = SdkUlkPowerControl;
    const auto codes = [](const A& adapter) {
        return TakenNumbers::range(adapter.minPowerCode(), adapter.maxPowerCode());
    };
    return Module(controls::ulkPower)
        .tunes("lo-power", "LO power code", &A::loPower, &A::setLoPower)
        .within(codes)
        .tunes("rf-power", "RF power code", &A::rfPower, &A::setRfPower)
        .within(codes)
        .shows("min-power-code", "the smallest power code", &A::minPowerCode)
        .shows("max-power-code", "the largest power code", &A::maxPowerCode)
        .tunes("synt-power-mode", "power mode of the synthesiser", &A::syntPowerMode, &A::setSyntPowerMode, 2)
        .tunes("attenuation-mode", "attenuation mode", &A::attenuationMode, &A::setAttenuationMode, 2)
        .tunes("attenuation-step", "attenuation step", &A::attenuationStep, &A::setAttenuationStep)
        .shows("default-attenuation-step", "the attenuation step after a reset", &A::defaultAttenuationStep)
        .tunes("step-attenuator-mode", "mode of the step attenuator", &A::stepAttenuatorMode, &A::setStepAttenuatorMode,
               4)
        .tunes("discrete-attenuator", "whether the discrete attenuator is in", &A::discreteAttenuatorEnabled,
               &A::enableDiscreteAttenuator)
        .tunes("discrete-attenuator-mode", "mode of the discrete attenuator", &A::discreteAttenuatorMode,
               &A::setDiscreteAttenuatorMode, 2)
        .tunes("common-attenuation-mode", "mode of the common attenuation", &A::commonAttenuationMode,
               &A::setCommonAttenuationMode, 2)
        .tunes("common-attenuation-step", "step of the common attenuation", &A::commonAttenuationStep,
               &A::setCommonAttenuationStep)
        .tunes("amp-t-port1", "gain of the amplifier T of port 1", &A::ampTPort1, &A::setAmpTPort1, 2)
        .tunes("amp-t-port2", "gain of the amplifier T of port 2", &A::ampTPort2, &A::setAmpTPort2, 2)
        .tunes("amp-r-port1", "gain of the amplifier R of port 1", &A::ampRPort1, &A::setAmpRPort1, 2)
        .loads("lo-power-codes", &A::setLoPowerCodes)
        .loads("rf-power-codes", &A::setRfPowerCodes)
        .resets();
}

TuneModule wn0807Synthesis()
{
    using A = SdkWn0807SynthesisControl;
    auto module =
        Module(controls::wn0807Synthesis)
            .tunes("lo-power", "LO power code", &A::loPower, &A::setLoPower)
            .tunes("rf-power", "RF power code", &A::rfPower, &A::setRfPower)
            .tunes("rf-power-mode", "RF power mode", &A::rfPowerMode, &A::setRfPowerMode, 3)
            .shows("rf-power-table", "rows of frequency and power code",
                   [](const A& adapter) { return toJson(adapter.rfPowerRangeTable()); })
            .plotted(TuneSetting::Plot::PowerCodes)
            .shows("rf-power-default-table", "the same as the module left the factory",
                   [](const A& adapter) { return toJson(adapter.rfPowerDefaultRangeTable()); })
            .plotted(TuneSetting::Plot::PowerCodes)
            .tunes("if-mode", "IF mode", &A::ifMode, &A::setIfMode, 2)
            .tunes("selected-if", "index of the selected IF in supported-ifs", &A::selectedIf, &A::setSelectedIf)
            .within([](const A& adapter) { return TakenNumbers::indices(adapter.supportedIfs().size()); })
            .shows("supported-ifs", "the IFs of the module", &A::supportedIfs)
            .in("Hz");

    for (const int row : {0, 1, 2, 3, 4}) {
        const auto cell = [row](auto field) {
            return [row, field](const A& adapter) -> std::optional<double> {
                const auto table = adapter.rfPowerRangeTable();
                return std::cmp_less(row, table.size())
                           ? std::optional(static_cast<double>(table[static_cast<std::size_t>(row)].*field))
                           : std::nullopt;
            };
        };
        const std::string prefix = "rf-power-row" + std::to_string(row);
        module
            .tunesBy<double>(prefix + "-frequency", "frequency in this row of rf-power-table",
                             cell(&A::PowerSyntEntry::frequency),
                             [row](A& adapter, double value) { adapter.setRfPowerRangeFrequency(row, value); })
            .in("Hz")
            .tunesBy<unsigned char>(
                prefix + "-power", "power code in this row of rf-power-table", cell(&A::PowerSyntEntry::power),
                [row](A& adapter, unsigned char value) { adapter.setRfPowerRangePower(row, value); });
    }
    for (const int number : {1, 2}) {
        const auto capacitor = static_cast<A::Capacitor>(number - 1);
        const std::string name = "capacitor" + std::to_string(number);
        module
            .tunesBy<A::CapacitorMode>(
                name + "-mode", "mode of the tunable capacitor",
                [capacitor](const A& adapter) { return adapter.capacitanceMode(capacitor); },
                [capacitor](A& adapter, A::CapacitorMode mode) { adapter.setCapacitanceMode(capacitor, mode); }, 4)
            .tunesRange(
                name + "-range", "range of the tunable capacitor",
                [capacitor](const A& adapter) { return adapter.capacitanceRange(capacitor); },
                [capacitor](A& adapter, const utils::Range<double>& range) {
                    adapter.setCapacitanceRange(capacitor, range);
                });
    }
    module.tunes("rf-filter-mode", "mode of the RF filters", &A::rfFilterMode, &A::setRfFilterMode, 3)
        .tunes("selected-rf-filter", "the selected RF filter, from 0", &A::selectedRfFilter, &A::setSelectedRfFilter,
               4);
    for (const int number : {0, 1, 2, 3}) {
        const auto filter = static_cast<A::RfFilter>(number);
        module
            .tunesBy<double>(
                "rf-filter" + std::to_string(number) + "-from", "frequency from which this RF filter is used",
                [filter](const A& adapter) { return adapter.rfFilterFrom(filter); },
                [filter](A& adapter, double frequency) { adapter.setRfFilterFrom(filter, frequency); })
            .in("Hz")
            .plotted(TuneSetting::Plot::BandFrom);
    }
    return module
        .tunes("dds-switch-frequency", "frequency at which the DDS switches", &A::ddsSwitchFreq, &A::setDdsSwitchFreq)
        .in("Hz")
        .tunes("delay-mode", "mode of the measurement delay", &A::delayMode, &A::setDelayMode, 2)
        .tunes("measure-delay", "measurement delay", &A::measureDelay, &A::setMeasureDelay);
}

TuneModule wn0807Power()
{
    using A = SdkWn0807PowerControl;
    return Module(controls::wn0807Power)
        .tunes("dac-mode", "DAC mode", &A::dacMode, &A::setDacMode, 4)
        .tunes("power-mode", "power mode", &A::powerMode, &A::setPowerMode, 2)
        .tunes("step-attenuator-mode", "mode of the step attenuator", &A::stepAttenuatorMode, &A::setStepAttenuatorMode,
               5)
        .tunes("discrete-attenuator-mode", "mode of the discrete attenuator", &A::discreteAttenuatorMode,
               &A::setDiscreteAttenuatorMode, 3)
        .tunes("power-constant", "power constant", &A::powerConstant, &A::setPowerConstant, 3)
        .tunes("rf-dac", "word of the RF DAC", &A::rfDac, &A::setRfDac)
        .tunes("split-dac", "word of the split DAC", &A::splitDac, &A::setSplitDac)
        .tunes("split-dds", "word of the split DDS", &A::splitDds, &A::setSplitDds)
        .tunes("attenuation-db", "attenuation", &A::attenuationDb, &A::setAttenuationDb)
        .in("dB")
        .tunes("attenuation-step", "attenuation in steps", &A::attenuationStep, &A::setAttenuationStep)
        .tunes("discrete-attenuator", "whether the discrete attenuator is in", &A::discreteAttenuatorEnabled,
               &A::enableDiscreteAttenuator)
        .tunes("square-pattern-step", "step of the square pattern", &A::squarePatternStep, &A::setSquarePatternStep)
        .tunes("dds-correction-mode", "mode of the DDS correction", &A::ddsCorrectionMode, &A::setDdsCorrectionMode, 2)
        .tunes("dds-correction", "whether the DDS is corrected", &A::ddsCorrectionEnabled, &A::enableDdsCorrection)
        .loads("power-calibration", &A::assignPowerCalibrationTable);
}

TuneModule loLeakage()
{
    using A = SdkLoLeakageControl;
    return Module(controls::loLeakage).tunes("lo-leakage", "the LO leakage function", &A::isEnabled, &A::setEnabled);
}

TuneModule kz515Power()
{
    using A = SdkKz515PowerControl;
    const auto powers = [](const A& adapter) { return TakenNumbers::range(0, adapter.maxPowerValue()); };
    const auto words = [](const A& adapter) { return TakenNumbers::range(0, adapter.maxDacValue()); };
    const auto gains = [](const A& adapter) { return TakenNumbers::list(adapter.availableGains()); };
    return Module(controls::kz515Power)
        .shows("max-power", "the largest power level", &A::maxPowerValue)
        .tunes("power-control-mode", "control mode of the powers", &A::powerControlMode, &A::setPowerControlMode, 2)
        .tunes("lo-power", "LO power level", &A::loPower, &A::setLoPower)
        .within(powers)
        .tunes("rf-power", "RF power level", &A::rfPower, &A::setRfPower)
        .within(powers)
        .shows("max-dac", "the largest DAC word", &A::maxDacValue)
        .tunes("dac-control-mode", "control mode of the DACs", &A::dacControlMode, &A::setDacControlMode, 2)
        .tunes("dac-union", "whether the two DACs act as one", &A::isDacModeUnion, &A::setDacModeUnion)
        .tunes("union-dac", "word of both DACs while they act as one", &A::unionDac, &A::setUnionDac)
        .within(words)
        .tunes("dac-a", "word of DAC A", &A::dacA, &A::setDacA)
        .within(words)
        .tunes("dac-b", "word of DAC B", &A::dacB, &A::setDacB)
        .within(words)
        .shows("available-gains", "the gains of the module", &A::availableGains)
        .tunes("reference-gain", "gain of the reference", &A::referenceGain, &A::setReferenceGain)
        .within(gains)
        .tunes("signal-gain", "gain of the signal", &A::signalGain, &A::setSignalGain)
        .within(gains)
        .loads("receiver-correction", &A::assignReceiverCorrectionTable)
        .loads("power-calibration", &A::assignPowerCalibrationTable);
}

TuneModule kz515Synthesis()
{
    using A = SdkKz515SynthesisControl;
    return Module(controls::kz515Synthesis)
        .shows("available-reference-frequencies", "the reference frequencies of the module",
               &A::availableReferenceFrequencies)
        .in("Hz")
        .tunes("reference-frequency", "the reference frequency", &A::currentReferenceFrequency,
               &A::setReferenceFrequency)
        .within([](const A& adapter) { return TakenNumbers::list(adapter.availableReferenceFrequencies()); })
        .in("Hz");
}

TuneModule yqSynthesis()
{
    using A = SdkYqSynthesisControl;
    return Module(controls::yqSynthesis)
        .tunes("manual-if", "whether a manually chosen IF is in force", &A::manualIfEnabled, &A::enableManualIf)
        .tunes("selected-if", "index of the selected IF in supported-ifs", &A::selectedIf, &A::setSelectedIf)
        .within([](const A& adapter) { return TakenNumbers::indices(adapter.supportedIfs().size()); })
        .shows("supported-ifs", "the IFs of the module", &A::supportedIfs)
        .in("Hz");
}

} // namespace

const std::vector<TuneModule>& tuneModules()
{
    static const std::vector<TuneModule> modules = {ulkSynthesis(), ulkPower(),   wn0807Synthesis(), wn0807Power(),
                                                    loLeakage(),    kz515Power(), kz515Synthesis(),  yqSynthesis()};
    return modules;
}

const TuneModule& tuneModuleNamed(const std::string& name)
{
    return named(tuneModules(), name, "module", [](const TuneModule& module) { return module.control->name; });
}

const TuneSetting& tuneSettingNamed(const TuneModule& module, const std::string& name)
{
    return named(module.settings, name, "setting", [](const TuneSetting& setting) { return setting.name; });
}

const TuneTable& tuneTableNamed(const TuneModule& module, const std::string& name)
{
    return named(module.tables, name, "table", [](const TuneTable& table) { return table.name; });
}

} // namespace tov::inline tools

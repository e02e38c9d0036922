#include "python/binding.h"
#include "python/rooms.h"

#include <optional>
#include <utility>

namespace tov::python {

namespace {

void bindUlkSynthesis(py::module_& module)
{
    using Adapter = SdkUlkSynthesisControl;
    Binding<Adapter>(module)
        .tunes("loLeakageMode", &Adapter::loLeakageMode, &Adapter::setLoLeakageMode)
        .tunes("manualIfEnabled", &Adapter::manualIfEnabled, &Adapter::enableManualIf)
        .tunes("selectedIf", &Adapter::selectedIf, &Adapter::setSelectedIf)
        .reads("supportedIfs", &Adapter::supportedIfs)
        .tunes("filter1Frequency", &Adapter::filter1Frequency, &Adapter::setFilter1Frequency)
        .tunes("manualRefEnabled", &Adapter::manualRefEnabled, &Adapter::enableManualRef)
        .tunes("selectedRef", &Adapter::selectedRef, &Adapter::setSelectedRef)
        .reads("supportedRefs", &Adapter::supportedRefs)
        .does("reset", &Adapter::reset)
        .complete();
}

void bindUlkPower(py::module_& module)
{
    using Adapter = SdkUlkPowerControl;
    Binding<Adapter>(module)
        .has<Adapter::AmpGain>()
        .has<Adapter::SyntPowerMode>()
        .has<Adapter::AttenuationMode>()
        .has<Adapter::CommonAttenuationMode>()
        .has<Adapter::DiscreteAttenuatorMode>()
        .has<Adapter::StepAttenuatorMode>()
        .tunes("loPower", &Adapter::loPower, &Adapter::setLoPower)
        .tunes("rfPower", &Adapter::rfPower, &Adapter::setRfPower)
        .reads("minPowerCode", &Adapter::minPowerCode)
        .reads("maxPowerCode", &Adapter::maxPowerCode)
        .tunes("syntPowerMode", &Adapter::syntPowerMode, &Adapter::setSyntPowerMode)
        .tunes("attenuationMode", &Adapter::attenuationMode, &Adapter::setAttenuationMode)
        .tunes("attenuationStep", &Adapter::attenuationStep, &Adapter::setAttenuationStep)
        .reads("defaultAttenuationStep", &Adapter::defaultAttenuationStep)
        .tunes("stepAttenuatorMode", &Adapter::stepAttenuatorMode, &Adapter::setStepAttenuatorMode)
        .tunes("discreteAttenuatorEnabled", &Adapter::discreteAttenuatorEnabled, &Adapter::enableDiscreteAttenuator)
        .tunes("discreteAttenuatorMode", &Adapter::discreteAttenuatorMode, &Adapter::setDiscreteAttenuatorMode)
        .tunes("commonAttenuationMode", &Adapter::commonAttenuationMode, &Adapter::setCommonAttenuationMode)
        .tunes("commonAttenuationStep", &Adapter::commonAttenuationStep, &Adapter::setCommonAttenuationStep)
        .tunes("ampTPort1", &Adapter::ampTPort1, &Adapter::setAmpTPort1)
        .tunes("ampTPort2", &Adapter::ampTPort2, &Adapter::setAmpTPort2)
        .tunes("ampRPort1", &Adapter::ampRPort1, &Adapter::setAmpRPort1)
        .does("setLoPowerCodes", &Adapter::setLoPowerCodes)
        .does("setRfPowerCodes", &Adapter::setRfPowerCodes)
        .does("reset", &Adapter::reset)
        .emits("loPowerChanged", &Adapter::loPowerChanged)
        .emits("rfPowerChanged", &Adapter::rfPowerChanged)
        .emits("syntPowerModeChanged", &Adapter::syntPowerModeChanged)
        .emits("attenuationStepChanged", &Adapter::attenuationStepChanged)
        .emits("stepAttenuatorModeChanged", &Adapter::stepAttenuatorModeChanged)
        .emits("discreteAttenuatorEnabledChanged", &Adapter::discreteAttenuatorEnabledChanged)
        .emits("discreteAttenuatorModeChanged", &Adapter::discreteAttenuatorModeChanged)
        .emits("attenuationModeChanged", &Adapter::attenuationModeChanged)
        .emits("commonAttenuationModeChanged", &Adapter::commonAttenuationModeChanged)
        .emits("commonAttenuationStepChanged", &Adapter::commonAttenuationStepChanged)
        .emits("ampTPort1Changed", &Adapter::ampTPort1Changed)
        .emits("ampTPort2Changed", &Adapter::ampTPort2Changed)
        .emits("ampRPort1Changed", &Adapter::ampRPort1Changed)
        .complete();
}

using Capacitor = SdkWn0807SynthesisControl::Capacitor;
using Bounds = std::pair<double, double>;

// Ranges are tuples.
std::optional<Bounds> capacitanceRange(SdkWn0807SynthesisControl& control, Capacitor capacitor)
{
    const auto range = control.capacitanceRange(capacitor);
    return range ? std::optional<Bounds>({range->first, range->second}) : std::nullopt;
}

void setCapacitanceRange(SdkWn0807SynthesisControl& control, Capacitor capacitor, Bounds range)
{
    control.setCapacitanceRange(capacitor, {range.first, range.second});
}

void bindWn0807Synthesis(py::module_& module)
{
    using Adapter = SdkWn0807SynthesisControl;
    Binding<Adapter>(module)
        .has<Adapter::Capacitor>()
        .has<Adapter::CapacitorMode>()
        .has<Adapter::RfPowerMode>()
        .has<Adapter::IfMode>()
        .has<Adapter::FilterMode>()
        .has<Adapter::RfFilter>()
        .has<Adapter::DelayMode>()
        .tunes("loPower", &Adapter::loPower, &Adapter::setLoPower)
        .tunes("rfPower", &Adapter::rfPower, &Adapter::setRfPower)
        .tunes("rfPowerMode", &Adapter::rfPowerMode, &Adapter::setRfPowerMode)
        .reads("rfPowerRangeTable", &Adapter::rfPowerRangeTable)
        .reads("rfPowerDefaultRangeTable", &Adapter::rfPowerDefaultRangeTable)
        .does("setRfPowerRangeFrequency", &Adapter::setRfPowerRangeFrequency)
        .does("setRfPowerRangePower", &Adapter::setRfPowerRangePower)
        .tunes("ifMode", &Adapter::ifMode, &Adapter::setIfMode)
        .tunes("selectedIf", &Adapter::selectedIf, &Adapter::setSelectedIf)
        .reads("supportedIfs", &Adapter::supportedIfs)
        .does("capacitanceMode", &Adapter::capacitanceMode)
        .does("setCapacitanceMode", &Adapter::setCapacitanceMode)
        .does("capacitanceRange", capacitanceRange)
        .does("setCapacitanceRange", setCapacitanceRange)
        .tunes("rfFilterMode", &Adapter::rfFilterMode, &Adapter::setRfFilterMode)
        .tunes("selectedRfFilter", &Adapter::selectedRfFilter, &Adapter::setSelectedRfFilter)
        .does("rfFilterFrom", &Adapter::rfFilterFrom)
        .does("setRfFilterFrom", &Adapter::setRfFilterFrom)
        .tunes("ddsSwitchFreq", &Adapter::ddsSwitchFreq, &Adapter::setDdsSwitchFreq)
        .tunes("delayMode", &Adapter::delayMode, &Adapter::setDelayMode)
        .tunes("measureDelay", &Adapter::measureDelay, &Adapter::setMeasureDelay)
        .complete();
}

void bindWn0807Power(py::module_& module)
{
    using Adapter = SdkWn0807PowerControl;
    Binding<Adapter>(module)
        .has<Adapter::DacMode>()
        .has<Adapter::PowerMode>()
        .has<Adapter::StepAttenuatorMode>()
        .has<Adapter::DiscreteAttenuatorMode>()
        .has<Adapter::PowerConstant>()
        .has<Adapter::DdsCorrectionMode>()
        .tunes("dacMode", &Adapter::dacMode, &Adapter::setDacMode)
        .tunes("powerMode", &Adapter::powerMode, &Adapter::setPowerMode)
        .tunes("stepAttenuatorMode", &Adapter::stepAttenuatorMode, &Adapter::setStepAttenuatorMode)
        .tunes("discreteAttenuatorMode", &Adapter::discreteAttenuatorMode, &Adapter::setDiscreteAttenuatorMode)
        .tunes("powerConstant", &Adapter::powerConstant, &Adapter::setPowerConstant)
        .tunes("rfDac", &Adapter::rfDac, &Adapter::setRfDac)
        .tunes("splitDac", &Adapter::splitDac, &Adapter::setSplitDac)
        .tunes("splitDds", &Adapter::splitDds, &Adapter::setSplitDds)
        .tunes("attenuationDb", &Adapter::attenuationDb, &Adapter::setAttenuationDb)
        .tunes("attenuationStep", &Adapter::attenuationStep, &Adapter::setAttenuationStep)
        .tunes("discreteAttenuatorEnabled", &Adapter::discreteAttenuatorEnabled, &Adapter::enableDiscreteAttenuator)
        .tunes("squarePatternStep", &Adapter::squarePatternStep, &Adapter::setSquarePatternStep)
        .tunes("ddsCorrectionMode", &Adapter::ddsCorrectionMode, &Adapter::setDdsCorrectionMode)
        .tunes("ddsCorrectionEnabled", &Adapter::ddsCorrectionEnabled, &Adapter::enableDdsCorrection)
        .does("assignPowerCalibrationTable", &Adapter::assignPowerCalibrationTable)
        .complete();
}

void bindLoLeakage(py::module_& module)
{
    using Adapter = SdkLoLeakageControl;
    Binding<Adapter>(module).tunes("isEnabled", &Adapter::isEnabled, &Adapter::setEnabled).complete();
}

void bindKz515Power(py::module_& module)
{
    using Adapter = SdkKz515PowerControl;
    Binding<Adapter>(module)
        .has<Adapter::ControlMode>()
        .reads("maxPowerValue", &Adapter::maxPowerValue)
        .tunes("powerControlMode", &Adapter::powerControlMode, &Adapter::setPowerControlMode)
        .tunes("loPower", &Adapter::loPower, &Adapter::setLoPower)
        .tunes("rfPower", &Adapter::rfPower, &Adapter::setRfPower)
        .reads("maxDacValue", &Adapter::maxDacValue)
        .tunes("dacControlMode", &Adapter::dacControlMode, &Adapter::setDacControlMode)
        .tunes("isDacModeUnion", &Adapter::isDacModeUnion, &Adapter::setDacModeUnion)
        .tunes("unionDac", &Adapter::unionDac, &Adapter::setUnionDac)
        .tunes("dacA", &Adapter::dacA, &Adapter::setDacA)
        .tunes("dacB", &Adapter::dacB, &Adapter::setDacB)
        .reads("availableGains", &Adapter::availableGains)
        .tunes("referenceGain", &Adapter::referenceGain, &Adapter::setReferenceGain)
        .tunes("signalGain", &Adapter::signalGain, &Adapter::setSignalGain)
        .does("assignReceiverCorrectionTable", &Adapter::assignReceiverCorrectionTable)
        .does("assignPowerCalibrationTable", &Adapter::assignPowerCalibrationTable)
        .complete();
}

void bindKz515Synthesis(py::module_& module)
{
    using Adapter = SdkKz515SynthesisControl;
    Binding<Adapter>(module)
        .reads("availableReferenceFrequencies", &Adapter::availableReferenceFrequencies)
        .reads("currentReferenceFrequency", &Adapter::currentReferenceFrequency)
        .does("setReferenceFrequency", &Adapter::setReferenceFrequency)
        .complete();
}

void bindYqSynthesis(py::module_& module)
{
    using Adapter = SdkYqSynthesisControl;
    Binding<Adapter>(module)
        .tunes("manualIfEnabled", &Adapter::manualIfEnabled, &Adapter::enableManualIf)
        .tunes("selectedIf", &Adapter::selectedIf, &Adapter::setSelectedIf)
        .reads("supportedIfs", &Adapter::supportedIfs)
        .complete();
}

} // namespace

void bindTuning(py::module_& module)
{
    bindUlkSynthesis(module);
    bindUlkPower(module);
    bindWn0807Synthesis(module);
    bindWn0807Power(module);
    bindLoLeakage(module);
    bindKz515Power(module);
    bindKz515Synthesis(module);
    bindYqSynthesis(module);
}

} // namespace tov::python

#include "conformance/bench/reads.h"

#include "sdk/ifactorycorrectioncontrol.h"
#include "sdk/itemperaturecontrol.h"
#include "sdk/service/ifilememorycontrol.h"
#include "sdk/service/ikz515powercontrol.h"
#include "sdk/service/ikz515synthesiscontrol.h"
#include "sdk/service/iloleakagecontrol.h"
#include "sdk/service/imemoryusbidcontrol.h"
#include "sdk/service/ipotentiometerscontrol.h"
#include "sdk/service/isystemtermscontrol.h"
#include "sdk/service/iulkpowercontrol.h"
#include "sdk/service/iulksynthesiscontrol.h"
#include "sdk/service/iwn0807powermodulecontrol.h"
#include "sdk/service/iwn0807synthesiscontrol.h"
#include "sdk/service/iyqfactorypowercalibrationcontrol.h"
#include "sdk/service/iyqifswcalibrationcontrol.h"
#include "sdk/service/iyqsynthesiscontrol.h"

#include <functional>
#include <type_traits>

namespace tov::conformance {

namespace controls = devices::controls;
using namespace sdk::service;

namespace {

struct Reads
{
    devices::ControlName control;
    std::function<void(void*)> all;
};

template <typename SdkIface, typename... Types, typename... Getters>
Reads reads(const devices::ControlKind<SdkIface, Types...>& kind, Getters... getters)
{
    return {kind,
            [=](void* control) { (static_cast<void>(std::invoke(getters, static_cast<SdkIface*>(control))), ...); }};
}

const std::vector<Reads>& allReads()
{
    using Corrections = sdk::IFactoryCorrectionControl;
    using Kz515 = IKZ515PowerControl;
    using Ulk = IUlkPowerControl;
    using UlkSynthesis = IUlkSynthesisControl;
    using Wn0807 = IWn0807PowerModuleControl;
    using Wn0807Synthesis = IWn0807SynthesisControl;
    static const std::vector<Reads> all{
        reads(controls::fileMemory, &IFileMemoryControl::isAvailable),
        reads(controls::potentiometers, &IPotentiometersControl::potentiometers),
        reads(controls::usbId, &IMemoryUsbIdControl::usbId, &IMemoryUsbIdControl::usbIds),
        reads(controls::ulkSynthesis, &UlkSynthesis::loLeakageMode, &UlkSynthesis::manualIfEnabled,
              &UlkSynthesis::selectedIf, &UlkSynthesis::supportedIfs, &UlkSynthesis::filter1Frequency,
              &UlkSynthesis::manualRefEnabled, &UlkSynthesis::selectedRef, &UlkSynthesis::supportedRefs),
        reads(controls::ulkPower, &Ulk::loPower, &Ulk::rfPower, &Ulk::minPowerCode, &Ulk::maxPowerCode,
              &Ulk::syntPowerMode, &Ulk::attenuationMode, &Ulk::attenuationStep, &Ulk::stepAttenuatorMode,
              &Ulk::defaultAttenuationStep, &Ulk::discreteAttenuatorEnabled, &Ulk::discreteAttenuatorMode,
              &Ulk::commonAttenuationMode, &Ulk::commonAttenuationStep, &Ulk::ampTPort2, &Ulk::ampRPort1,
              &Ulk::ampTPort1),
        reads(controls::wn0807Synthesis, &Wn0807Synthesis::loPower, &Wn0807Synthesis::rfPower,
              &Wn0807Synthesis::rfPowerMode, &Wn0807Synthesis::rfPowerRangeTable,
              &Wn0807Synthesis::rfPowerDefaultRangeTable, &Wn0807Synthesis::ifMode, &Wn0807Synthesis::selectedIf,
              &Wn0807Synthesis::supportedIfs, &Wn0807Synthesis::rfFilterMode, &Wn0807Synthesis::selectedRfFilter,
              &Wn0807Synthesis::ddsSwitchFreq, &Wn0807Synthesis::delayMode, &Wn0807Synthesis::measureDelay),
        reads(controls::wn0807Power, &Wn0807::dacMode, &Wn0807::powerMode, &Wn0807::stepAttenuatorMode,
              &Wn0807::discreteAttenuatorMode, &Wn0807::powerConstant, &Wn0807::rfDac, &Wn0807::splitDac,
              &Wn0807::splitDds, &Wn0807::attenuationDb, &Wn0807::attenuationStep, &Wn0807::discreteAttenuatorEnabled,
              &Wn0807::squarePatternStep, &Wn0807::ddsCorrectionMode, &Wn0807::ddsCorrectionEnabled),
        reads(controls::loLeakage, &ILoLeakageControl::isEnabled),
        reads(controls::kz515Power, &Kz515::maxPowerValue, &Kz515::powerControlMode, &Kz515::loPower, &Kz515::rfPower,
              &Kz515::maxDacValue, &Kz515::dacControlMode, &Kz515::dacMode, &Kz515::unionDac, &Kz515::dacA,
              &Kz515::dacB, &Kz515::availableGains, &Kz515::referenceGain, &Kz515::signalGain),
        reads(controls::kz515Synthesis, &IKZ515SynthesisControl::availableReferenceFrequencies,
              &IKZ515SynthesisControl::currentReferenceFrequency),
        reads(controls::yqSynthesis, &IYqSynthesisControl::manualIfEnabled, &IYqSynthesisControl::selectedIf,
              &IYqSynthesisControl::supportedIfs),
        reads(controls::systemTerms, &ISystemTermsControl::termsRecords, &ISystemTermsControl::systemTermsFlag),
        reads(controls::ifswCalibration, &IYqIfswCalibrationControl::frequencyPlan),
        reads(controls::factoryPowerCalibration, &IYqFactoryPowerCalibrationControl::frequencyPlan),
        reads(controls::factoryCorrections, &Corrections::supportedCorrections, &Corrections::validCorrections,
              &Corrections::enabledCorrections, &Corrections::modifiableCorrections),
        reads(controls::temperature, &sdk::ITemperatureControl::temperature,
              &sdk::ITemperatureControl::modulesTemperature),
    };
    return all;
}

// The bytes of an element that are its value.
template <typename Value>
void append(QByteArray& content, const Value& value)
{
    if constexpr (std::is_class_v<Value>) { // whose gaps are nobody's
        append(content, value.frequency);
        append(content, value.power);
    } else {
        content.append(reinterpret_cast<const char*>(&value), sizeof(value)); // NOLINT(*-reinterpret-cast): its bytes
    }
}

template <typename SdkIface, typename... Types, typename Element>
View view(const devices::ControlKind<SdkIface, Types...>& kind, const char* name,
          std::span<const Element> (SdkIface::*function)())
{
    return {kind, name, [function](const std::shared_ptr<void>& control) -> std::function<QByteArray()> {
                const auto elements = (static_cast<SdkIface*>(control.get())->*function)();
                return [elements] {
                    QByteArray content;
                    for (const Element& element : elements)
                        append(content, element);
                    return content;
                };
            }};
}

std::function<QByteArray()> temperatures(const std::shared_ptr<void>& control)
{
    const auto& modules = static_cast<sdk::ITemperatureControl*>(control.get())->modulesTemperature();
    return [&modules] {
        QByteArray content;
        for (const auto& [name, temperature] : modules) {
            content.append(name.data(), static_cast<qsizetype>(name.size()));
            append(content, temperature);
        }
        return content;
    };
}

} // namespace

void readAll(const devices::ControlName& kind, const std::shared_ptr<void>& control)
{
    for (const Reads& each : allReads())
        if (each.control == kind)
            each.all(control.get());
}

const std::vector<View>& views()
{
    static const std::vector<View> all{
        view(controls::ulkSynthesis, "supportedIfs", &IUlkSynthesisControl::supportedIfs),
        view(controls::ulkSynthesis, "supportedRefs", &IUlkSynthesisControl::supportedRefs),
        view(controls::wn0807Synthesis, "rfPowerRangeTable", &IWn0807SynthesisControl::rfPowerRangeTable),
        view(controls::wn0807Synthesis, "rfPowerDefaultRangeTable", &IWn0807SynthesisControl::rfPowerDefaultRangeTable),
        view(controls::wn0807Synthesis, "supportedIfs", &IWn0807SynthesisControl::supportedIfs),
        view(controls::yqSynthesis, "supportedIfs", &IYqSynthesisControl::supportedIfs),
        {controls::temperature, "modulesTemperature", &temperatures, true},
    };
    return all;
}

} // namespace tov::conformance

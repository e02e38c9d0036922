#include "tools/tuning/tuning.h"

#include "tools/text/named.h"
#include "tools/text/number.h"
#include "tools/text/values.h"

#include <QJsonArray>

#include <cmath>
#include <functional>
#include <limits>
#include <type_traits>
#include <utility>

namespace tov::inline tools {

namespace {

namespace controls = host::controls;
using namespace devices::service;

template <typename Number>
QJsonArray toJson(const std::vector<Number>& numbers)
{
    QJsonArray list;
    for (const Number number : numbers)
        list.append(static_cast<double>(number));
    return list;
}

QJsonValue toJson(const QJsonArray& list)
{
    return list;
}

QJsonArray toJson(const std::vector<SdkWn0807SynthesisControl::PowerSyntEntry>& table)
{
    QJsonArray list;
    for (const auto& row : table)
        list.append(QJsonArray{row.frequency, static_cast<int>(row.power)});
    return list;
}

QJsonValue toJson(const std::optional<utils::Range<double>>& range)
{
    return range ? QJsonArray{range->first, range->second} : QJsonValue();
}

QJsonValue toJson(bool value)
{
    return value;
}

template <typename Number>
    requires(std::is_arithmetic_v<Number> && !std::is_same_v<Number, bool>)
QJsonValue toJson(Number number)
{
    return static_cast<double>(number);
}

template <typename Enumeration>
    requires std::is_enum_v<Enumeration>
QJsonValue toJson(Enumeration value)
{
    return static_cast<int>(value);
}

template <typename Value>
QJsonValue toJson(const std::optional<Value>& value)
{
    return value ? toJson(*value) : QJsonValue();
}

template <typename Value>
Value fromJson(const QJsonValue& value)
{
    if constexpr (std::is_same_v<Value, bool>)
        return value.toBool();
    else if constexpr (std::is_enum_v<Value>)
        return static_cast<Value>(value.toInt());
    else
        return static_cast<Value>(value.toDouble());
}

std::optional<QJsonValue> parseOnOff(const std::string& text)
{
    if (text == "on" || text == "off")
        return text == "on";
    return {};
}

template <typename Number>
std::optional<QJsonValue> parseNumberOf(const std::string& text)
{
    if constexpr (std::is_floating_point_v<Number>) {
        const auto number = parseReal<Number>(text);
        return number && std::isfinite(*number) ? std::optional<QJsonValue>(static_cast<double>(*number))
                                                : std::nullopt;
    } else {
        const auto number = parseNumber<Number>(text);
        return number ? std::optional<QJsonValue>(static_cast<double>(*number)) : std::nullopt;
    }
}

// "FIRST..SECOND"
std::optional<QJsonValue> parseRange(const std::string& text)
{
    const auto dots = text.find("..");
    if (dots == std::string::npos)
        return {};
    const auto first = parseReal<double>(std::string_view(text).substr(0, dots));
    const auto second = parseReal<double>(std::string_view(text).substr(dots + 2));
    return first && second && std::isfinite(*first) && std::isfinite(*second)
               ? std::optional<QJsonValue>(QJsonArray{*first, *second})
               : std::nullopt;
}

template <typename Number>
std::string typeOf()
{
    if constexpr (std::is_floating_point_v<Number>)
        return "a number";
    else if constexpr (std::is_same_v<Number, int>)
        return "a whole number";
    else
        return TakenNumbers::range(0, std::numeric_limits<Number>::max()).inColumn();
}

template <typename Number>
std::string typeInWordsOf()
{
    if constexpr (std::is_floating_point_v<Number>)
        return "a number";
    else
        return wholeNumbers(std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max());
}

/// Makes the description of one module, setting by setting.
template <typename Adapter>
class Module
{
public:
    explicit Module(const host::Control<Adapter>& kind)
        : m_module{.control = &kind,
                   .settings = {},
                   .tables = {},
                   .reset = nullptr,
                   .adapter = [&kind](host::InstrumentSession& session) -> TunedAdapter {
                       return {requireFrom(session, kind).get()};
                   },
                   .run =
                       [&kind](host::InstrumentSession& session, std::function<void(TunedAdapter)> function) {
                           session.run(kind, [function = std::move(function)](Adapter& adapter) {
                               function(TunedAdapter{&adapter});
                           });
                       }}
    {
    }

    // Implicit, so that the description of a module can simply be returned.
    // NOLINTNEXTLINE(google-explicit-constructor)
    operator TuneModule() { return std::move(m_module); }

    /// A getter, which is anything that can be called with the adapter.
    template <typename Getter>
    Module& shows(const std::string& name, const std::string& meaning, Getter getter)
    {
        m_module.settings.push_back({.name = name,
                                     .meaning = meaning,
                                     .unit = {},
                                     .kind = TuneSetting::Kind::Other,
                                     .plot = TuneSetting::Plot::None,
                                     .least = 0,
                                     .most = 0,
                                     .type = "read-only",
                                     .typeInWords = {},
                                     .allowed = nullptr,
                                     .choices = {},
                                     .read = [getter](TunedAdapter tuned) -> QJsonValue {
                                         return toJson(std::invoke(getter, std::as_const(adapterOf(tuned))));
                                     },
                                     .parse = nullptr,
                                     .write = nullptr});
        return *this;
    }

    /// A getter and a setter of a switch, a number or an enumeration; an enumeration has the numbers below `count`.
    template <typename Getter, typename Value>
    Module& tunes(const std::string& name, const std::string& meaning, Getter getter, void (Adapter::*setter)(Value),
                  int count = 0)
    {
        return tunesBy<Value>(
            name, meaning, getter, [setter](Adapter& adapter, Value value) { (adapter.*setter)(value); }, count);
    }

    /// The same with a setter that is anything that can be called with the adapter and the value.
    template <typename Value, typename Getter, typename Setter>
    Module& tunesBy(const std::string& name, const std::string& meaning, Getter getter, Setter setter, int count = 0)
    {
        auto& setting = shows(name, meaning, getter).m_module.settings.back();
        setting.write = [setter](TunedAdapter tuned, const QJsonValue& value) {
            setter(adapterOf(tuned), fromJson<Value>(value));
        };
        if constexpr (std::is_same_v<Value, bool>) {
            setting.kind = TuneSetting::Kind::Switch;
            setting.type = "on|off";
            setting.typeInWords = "on or off";
            setting.choices = {"on", "off"};
            setting.parse = parseOnOff;
        } else if constexpr (std::is_enum_v<Value>) {
            const auto numbers = TakenNumbers::range(0, count - 1);
            setting.kind = TuneSetting::Kind::Choice;
            setting.type = numbers.inColumn();
            setting.typeInWords = numbers.inWords();
            for (int i = 0; i < count; ++i)
                setting.choices.push_back(std::to_string(i));
            setting.parse = [count](const std::string& text) -> std::optional<QJsonValue> {
                const auto number = parseNumber<int>(text);
                return number && *number >= 0 && *number < count ? std::optional<QJsonValue>(*number) : std::nullopt;
            };
        } else {
            setting.kind = std::is_integral_v<Value> ? TuneSetting::Kind::WholeNumber : TuneSetting::Kind::Number;
            setting.least = static_cast<double>(std::numeric_limits<Value>::lowest());
            setting.most = static_cast<double>(std::numeric_limits<Value>::max());
            setting.type = typeOf<Value>();
            setting.typeInWords = typeInWordsOf<Value>();
            setting.parse = parseNumberOf<Value>;
        }
        return *this;
    }

    /// A pair of numbers, written as FIRST..SECOND.
    template <typename Getter, typename Setter>
    Module& tunesRange(const std::string& name, const std::string& meaning, Getter getter, Setter setter)
    {
        auto& setting = shows(name, meaning, getter).m_module.settings.back();
        setting.kind = TuneSetting::Kind::Range;
        setting.type = "FIRST..SECOND";
        setting.typeInWords = "two numbers, written as FIRST..SECOND";
        setting.parse = parseRange;
        setting.write = [setter](TunedAdapter tuned, const QJsonValue& value) {
            setter(adapterOf(tuned), utils::Range<double>{value[0].toDouble(), value[1].toDouble()});
        };
        return *this;
    }

    /// Says which values the last setting takes on this instrument.
    template <typename Allowed>
    Module& within(Allowed allowed)
    {
        m_module.settings.back().allowed = [allowed](TunedAdapter tuned) -> TakenNumbers {
            return allowed(std::as_const(adapterOf(tuned)));
        };
        return *this;
    }

    /// Says in which unit the last setting is.
    Module& in(const std::string& unit)
    {
        m_module.settings.back().unit = unit;
        return *this;
    }

    /// Says how a plot shows the last setting.
    Module& plotted(TuneSetting::Plot plot)
    {
        m_module.settings.back().plot = plot;
        return *this;
    }

    template <typename Loader>
    Module& loads(const std::string& table, Loader loader)
    {
        m_module.tables.push_back({table, [loader](TunedAdapter tuned, const std::vector<unsigned char>& bytes) {
                                       std::invoke(loader, adapterOf(tuned), bytes);
                                   }});
        return *this;
    }

    Module& resets()
    {
        m_module.reset = [](TunedAdapter tuned) { adapterOf(tuned).reset(); };
        return *this;
    }

private:
    static Adapter& adapterOf(TunedAdapter tuned) { return *static_cast<Adapter*>(tuned.adapter); }

    TuneModule m_module;
};

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

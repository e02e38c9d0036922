#pragma once

// How the table of settings is written: tuning.cpp alone includes this.

#include "tools/text/number.h"
#include "tools/text/values.h"
#include "tools/tuning/tuning.h"

#include <QJsonArray>

#include <cmath>
#include <functional>
#include <limits>
#include <type_traits>
#include <utility>

namespace tov::inline tools::describing {

template <typename Number>
QJsonArray toJson(const std::vector<Number>& numbers)
{
    QJsonArray list;
    for (const Number number : numbers)
        list.append(static_cast<double>(number));
    return list;
}

inline QJsonValue toJson(const QJsonArray& list)
{
    return list;
}

inline QJsonArray toJson(const std::vector<devices::service::SdkWn0807SynthesisControl::PowerSyntEntry>& table)
{
    QJsonArray list;
    for (const auto& row : table)
        list.append(QJsonArray{row.frequency, static_cast<int>(row.power)});
    return list;
}

inline QJsonValue toJson(const std::optional<utils::Range<double>>& range)
{
    return range ? QJsonArray{range->first, range->second} : QJsonValue();
}

inline QJsonValue toJson(bool value)
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

inline std::optional<QJsonValue> parseOnOff(const std::string& text)
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
inline std::optional<QJsonValue> parseRange(const std::string& text)
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
                           requireFrom(session, kind);
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

} // namespace tov::inline tools::describing

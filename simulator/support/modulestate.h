#pragma once

#include "simulator/support/controlstate.h"

#include <QString>

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace tov::simulator {

/// What a setting makes of a number that it is given; nothing when it refuses it.
using Acceptance = std::function<std::optional<double>(double)>;

/// Numbers from `least` to `most`; beyond them the nearest is taken.
Acceptance nearest(double least, double most);

/// Numbers from `least` to `most`; beyond them the setting stays as it is.
Acceptance within(double least, double most);

/// The numbers of `values`; by any other the setting stays as it is.
template <typename Values>
Acceptance oneOf(const Values& values)
{
    return [values](double number) {
        return std::ranges::find(values, number) != values.end() ? std::optional(number) : std::nullopt;
    };
}

/// A hardware module of the simulated instrument. What it can be set to, and the tables that can be loaded into it,
/// are members of the classes made from this one, each under the name by which a file keeps it.
class ModuleState : public ControlState
{
public:
    class Number;
    class Table;

    /// Takes every setting back to what it was at first; tables stay.
    void reset();

    QCborMap save() const override;
    void restore(const QCborMap& saved) override;

private:
    // In the order of their names, by which a file keeps them.
    std::map<QString, Number*> m_numbers;
    std::map<QString, Table*> m_tables;

    mutable std::mutex m_mutex; // guards what is in them
};

/// What all settings have in common: each is a number inside, or nothing.
class ModuleState::Number
{
public:
    Number(ModuleState& module, const QString& name, std::optional<double> initial, Acceptance acceptance);
    Number(const Number&) = delete;
    Number& operator=(const Number&) = delete;
    ~Number() = default;

    const QString& name() const noexcept { return m_name; }
    std::optional<double> number() const;
    void setNumber(double number);

private:
    friend ModuleState;

    ModuleState& m_module;
    const QString m_name;
    const std::optional<double> m_initial;
    const Acceptance m_acceptance;
    std::optional<double> m_number; // guarded by the module's mutex
};

/// A table that can be loaded into a module.
class ModuleState::Table
{
public:
    using Bytes = std::vector<unsigned char>;

    Table(ModuleState& module, const QString& name);
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;
    ~Table() = default;

    void load(Bytes bytes);

private:
    friend ModuleState;

    ModuleState& m_module;
    std::optional<Bytes> m_bytes; // guarded by the module's mutex
};

/// One setting of a module: a number, a `bool` or an enumeration.
///
/// Thread: *any thread*.
template <typename Value>
class Setting : public ModuleState::Number
{
public:
    Setting(ModuleState& module, const QString& name, Value initial, Acceptance acceptance = within(0, 1))
        : Number(module, name, static_cast<double>(initial), std::move(acceptance))
    {
    }

    Value value() const { return static_cast<Value>(number().value_or(0.0)); }
    void set(Value value) { setNumber(static_cast<double>(value)); }
};

/// One that has no value before it is set.
template <typename Value>
class Setting<std::optional<Value>> : public ModuleState::Number
{
public:
    Setting(ModuleState& module, const QString& name, std::optional<Value> initial, Acceptance acceptance)
        : Number(module, name, initial ? std::optional(static_cast<double>(*initial)) : std::nullopt,
                 std::move(acceptance))
    {
    }

    std::optional<Value> value() const
    {
        const auto held = number();
        return held ? std::optional(static_cast<Value>(*held)) : std::nullopt;
    }
    void set(Value value) { setNumber(static_cast<double>(value)); }
};

/// Settings of one kind by their index, which follows their name. Beyond the last one nothing can be set, and a read
/// gives the value that is 0 or nothing.
template <typename Value, std::size_t Count>
class SettingRow
{
public:
    SettingRow(ModuleState& module, const QString& name, const std::array<Value, Count>& initial,
               const Acceptance& acceptance)
        : SettingRow(module, name, initial, acceptance, std::make_index_sequence<Count>())
    {
    }

    Value value(int index) const { return has(index) ? at(index).value() : Value(); }

    template <typename Set>
    void set(int index, Set value)
    {
        if (has(index))
            at(index).set(value);
    }

private:
    template <std::size_t... Index>
    SettingRow(ModuleState& module, const QString& name, const std::array<Value, Count>& initial,
               const Acceptance& acceptance, std::index_sequence<Index...>)
        : m_settings{Setting<Value>(module, name + QString::number(Index), initial[Index], acceptance)...}
    {
    }

    static bool has(int index) { return index >= 0 && std::cmp_less(index, Count); }
    auto& at(int index) { return m_settings.at(static_cast<std::size_t>(index)); }
    const auto& at(int index) const { return m_settings.at(static_cast<std::size_t>(index)); }

    std::array<Setting<Value>, Count> m_settings;
};

/// A control that does nothing but keep the settings of its module.
template <typename SdkIface, typename State>
class ModuleControl : public SdkIface
{
public:
    explicit ModuleControl(std::shared_ptr<State> state)
        : m_state(std::move(state))
    {
    }

protected:
    const std::shared_ptr<State> m_state;
};

} // namespace tov::simulator

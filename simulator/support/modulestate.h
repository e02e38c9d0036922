#pragma once

#include "simulator/support/controlstate.h"
#include "simulator/support/machine.h"

#include <QCborMap>
#include <QString>

#include <algorithm>
#include <cstddef>
#include <deque>
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
    std::map<QString, Number*> m_numbers; // in the order in which a file keeps them

    mutable std::mutex m_mutex; // guards what is held by them, and all below
    QCborMap m_tables;
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
    std::optional<double> m_number; // guarded by the module
};

/// A table that can be loaded into a module.
class ModuleState::Table
{
public:
    Table(ModuleState& module, QString name)
        : m_module(module)
        , m_name(std::move(name))
    {
    }

    void load(const std::vector<unsigned char>& bytes);

private:
    ModuleState& m_module;
    const QString m_name;
};

/// One setting of a module: a number, a `bool` or an enumeration, or one of these that has no value before it is set.
///
/// Thread: *any thread*.
template <typename Value>
class Setting : public ModuleState::Number
{
public:
    /// What an optional one holds.
    using Held = typename decltype(std::optional(std::declval<Value>()))::value_type;

    Setting(ModuleState& module, const QString& name, std::optional<Held> initial, Acceptance acceptance = within(0, 1))
        : Number(module, name, initial ? std::optional(static_cast<double>(*initial)) : std::nullopt,
                 std::move(acceptance))
    {
    }

    Value value() const
    {
        const auto held = number();
        return held ? Value(static_cast<Held>(*held)) : Value();
    }
    void set(Held value) { setNumber(static_cast<double>(value)); }
};

/// Settings of one kind by their index, which follows their name. Beyond the last one nothing can be set, and a read
/// gives 0 or nothing.
template <typename Value>
class SettingRow
{
public:
    SettingRow(ModuleState& module, const QString& name, const std::vector<Value>& initial,
               const Acceptance& acceptance)
    {
        for (const Value& each : initial)
            m_settings.emplace_back(module, name + QString::number(m_settings.size()), each, acceptance);
    }

    Value value(int index) const { return has(index) ? m_settings[static_cast<std::size_t>(index)].value() : Value(); }
    void set(int index, typename Setting<Value>::Held value)
    {
        if (has(index))
            m_settings[static_cast<std::size_t>(index)].set(value);
    }

private:
    bool has(int index) const { return index >= 0 && std::cmp_less(index, m_settings.size()); }

    std::deque<Setting<Value>> m_settings; // never moves them
};

/// A control that does nothing but keep the settings of its module. What it does may be made to throw, as `State` says:
/// `reading` a setting, and `changing` any.
template <typename SdkIface, typename State>
class ModuleControl : public SdkIface
{
public:
    ModuleControl(std::shared_ptr<Machine> machine, std::shared_ptr<State> state)
        : m_machine(std::move(machine))
        , m_state(std::move(state))
    {
    }

protected:
    /// The module, once for each operation of the SDK.
    const State& read() const
    {
        m_machine->begin(State::reading);
        return *m_state;
    }
    State& change() const
    {
        m_machine->begin(State::changing);
        return *m_state;
    }

private:
    const std::shared_ptr<Machine> m_machine;
    const std::shared_ptr<State> m_state;
};

} // namespace tov::simulator

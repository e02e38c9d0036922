#pragma once

#include "console/workbench.h"

#include <QJsonValue>

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tov::console {

/// How a value is written on the command line.
struct ValueType
{
    /// What is accepted, as the help shows it.
    std::string_view accepted;

    /// The value that `text` stands for, or nothing.
    std::optional<QJsonValue> (*parse)(const std::string& text);
};

extern const ValueType onOff;
extern const ValueType wholeNumber;

/// One setting of an adapter as the command line shows it. One that can only be read has neither `type` nor
/// `write`.
template <typename Adapter>
struct Setting
{
    std::string_view name;
    std::string_view meaning;
    QJsonValue (*read)(const Adapter&);
    const ValueType* type = nullptr;
    void (*write)(Adapter&, const QJsonValue&) = nullptr;
};

/// The value that `text` stands for. Throws `CommandError` (BadUse), which says what is accepted.
QJsonValue parseValue(const ValueType& type, std::string_view setting, const std::string& text);

/// Reports that the instrument holds another value than the one it was given.
CommandError notTaken(std::string_view setting, const QJsonValue& asked, const QJsonValue& kept);

/// The lines that the help shows for a list of settings.
template <typename Adapter>
std::string describe(std::span<const Setting<Adapter>> settings)
{
    std::string lines = "Settings:\n";
    for (const auto& setting : settings) {
        lines.append("  ").append(setting.name).append("  ").append(setting.meaning);
        lines.append(" (").append(setting.write ? setting.type->accepted : "read-only").append(")\n");
    }
    return lines;
}

/// The setting of this name. Throws `CommandError` (BadUse), which lists the names that there are.
template <typename Adapter>
const Setting<Adapter>& settingNamed(std::span<const Setting<Adapter>> settings, const std::string& name)
{
    const auto found = std::ranges::find(settings, name, &Setting<Adapter>::name);
    if (found != settings.end())
        return *found;

    std::string known;
    for (const auto& setting : settings)
        known.append(known.empty() ? "" : ", ").append(setting.name);
    throw CommandError(ExitStatus::BadUse, "unknown setting '" + name + "'; there are " + known);
}

/// Answers with the present values of `settings`.
template <typename Adapter>
void showSettings(Output& output, const Adapter& adapter, std::span<const Setting<Adapter>> settings)
{
    Table table({"setting", "value"});
    QJsonObject json;
    for (const auto& setting : settings) {
        const QJsonValue value = setting.read(adapter);
        table.addRow({std::string(setting.name), toText(value)});
        json.insert(QString::fromUtf8(setting.name), value);
    }
    output.answer(table.toText(), json);
}

/// Gives `setting` the value that `text` stands for and answers with what the instrument then holds.
/// Throws `CommandError`: BadUse when the setting is read-only or does not take such a value, before
/// the instrument is asked for anything, and Failure when the instrument kept another value.
template <typename Adapter>
void changeSetting(Workbench& workbench, const host::Control<Adapter>& kind, const Setting<Adapter>& setting,
                   const std::string& text)
{
    if (!setting.write)
        throw CommandError(ExitStatus::BadUse, std::string(setting.name) + " can only be read");

    const QJsonValue asked = parseValue(*setting.type, setting.name, text);
    const auto adapter = workbench.require(kind);
    setting.write(*adapter, asked);
    const QJsonValue kept = setting.read(*adapter);
    if (kept != asked)
        throw notTaken(setting.name, asked, kept);
    showSettings(workbench.output(), *adapter, std::span(&setting, 1));
}

} // namespace tov::console

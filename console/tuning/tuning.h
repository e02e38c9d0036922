#pragma once

#include "console/session/controls.h"

#include <QJsonValue>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tov::console {

/// One setting of a hardware module as the command line shows it. One that can only be read has no `write`.
struct TuneSetting
{
    std::string name;
    std::string meaning;
    std::string unit; ///< empty: a number without one, or in the module's own

    /// What the values are, and which are taken, in words.
    std::string type;
    std::function<std::string(host::InstrumentSession&)> allowed;

    /// The values to offer where a user types one, if they can be listed.
    std::vector<std::string> choices;

    std::function<QJsonValue(host::InstrumentSession&)> read;
    std::function<std::optional<QJsonValue>(const std::string& text)> parse;
    std::function<void(host::InstrumentSession&, const QJsonValue&)> write;
};

/// A table of bytes that can be loaded into a module.
struct TuneTable
{
    std::string name;
    std::function<void(host::InstrumentSession&, const std::vector<unsigned char>&)> load;
};

/// A hardware module with everything that can be tuned on it.
struct TuneModule
{
    const host::ControlName* control;
    std::vector<TuneSetting> settings;
    std::vector<TuneTable> tables;
    std::function<void(host::InstrumentSession&)> reset; // empty: it has none
};

/// All modules, in the order of registration. Help, completion, listing, JSON and parsing follow from this table.
const std::vector<TuneModule>& tuneModules();

/// Each throws `BadUse`, which lists the names that there are, for an unknown one.
const TuneModule& tuneModuleNamed(const std::string& name);
const TuneSetting& tuneSettingNamed(const TuneModule& module, const std::string& name);
const TuneTable& tuneTableNamed(const TuneModule& module, const std::string& name);

/// Gives `setting` the value that `text` stands for. Throws `BadUse` when the setting is read-only or
/// does not take such a value, before the instrument is asked for anything, and Failure when the instrument kept
/// another value.
void changeSetting(host::InstrumentSession& session, const TuneSetting& setting, const std::string& text);

/// What `setting` takes on this instrument, in words.
std::string allowedBy(host::InstrumentSession& session, const TuneSetting& setting);

/// A value as text; one that is not there is "none".
std::string shown(const QJsonValue& value);

} // namespace tov::console

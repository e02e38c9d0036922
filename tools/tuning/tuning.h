#pragma once

#include "tools/controls.h"
#include "tools/tuning/takennumbers.h"

#include <QJsonValue>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tov::inline tools {

/// One setting of a hardware module as the command line shows it. One that can only be read has no `write`.
struct TuneSetting
{
    std::string name;
    std::string meaning;
    std::string unit; ///< empty: a number without one, or in the module's own

    /// What the values are, as a column of a table shows it and as a message says it.
    std::string type;
    std::string typeInWords;

    /// Which of them an instrument takes, where it tells that.
    std::function<TakenNumbers(host::InstrumentSession&)> allowed;

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

/// Each throws `BadUse`, which names what may have been meant, for an unknown one.
const TuneModule& tuneModuleNamed(const std::string& name);
const TuneSetting& tuneSettingNamed(const TuneModule& module, const std::string& name);
const TuneTable& tuneTableNamed(const TuneModule& module, const std::string& name);

/// Gives `setting` the value that `text` stands for. Throws `BadUse` when the setting is read-only or does not take
/// such a value, and `Failure` when the instrument kept another one; it is given back then what it held before.
void changeSetting(host::InstrumentSession& session, const TuneSetting& setting, const std::string& text);

/// What `setting` takes on this instrument, as a column of a table shows it.
std::string allowedBy(host::InstrumentSession& session, const TuneSetting& setting);

/// A value as text; one that is not there is "none".
std::string shown(const QJsonValue& value);

} // namespace tov::inline tools

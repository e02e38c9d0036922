#pragma once

#include "tools/controls.h"
#include "tools/tuning/takennumbers.h"

#include <QJsonValue>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tov::inline tools {

/// The adapter of a module, which only the functions of that module's settings look into. The session keeps it.
struct TunedAdapter
{
    void* adapter;
};

/// One setting of a hardware module as people see it. One that can only be read has no `write`.
///
/// Thread: *any thread* for its functions, which take as long as the instrument does.
struct TuneSetting
{
    /// What kind of value it has.
    enum class Kind {
        Other,       ///< a list, a table, or whatever else can only be read
        Switch,      ///< true or false
        Choice,      ///< the number of one of `choices`
        WholeNumber, ///< from `least` to `most`
        Number,
        Range, ///< two numbers
    };

    /// How a plot over the frequency shows it.
    enum class Plot {
        None,
        PowerCodes, ///< rows of frequency and power code
        BandFrom,   ///< a band begins there, and ends where the next one does
    };

    std::string name;
    std::string meaning;
    std::string unit; ///< empty: a number without one, or in the module's own
    Kind kind = Kind::Other;
    Plot plot = Plot::None;

    /// The ends of what fits into a whole number of its type.
    double least = 0;
    double most = 0;

    /// What the values are, as a column of a table shows it and as a message says it.
    std::string type;
    std::string typeInWords;

    /// Which of them an instrument takes, where it tells that.
    std::function<TakenNumbers(TunedAdapter)> allowed;

    /// The values to offer where a user types one, if they can be listed.
    std::vector<std::string> choices;

    std::function<QJsonValue(TunedAdapter)> read;
    std::function<std::optional<QJsonValue>(const std::string& text)> parse;
    std::function<void(TunedAdapter, const QJsonValue&)> write;
};

/// A table of bytes that can be loaded into a module.
struct TuneTable
{
    std::string name;
    std::function<void(TunedAdapter, const std::vector<unsigned char>&)> load;
};

/// A hardware module with everything that can be tuned on it.
struct TuneModule
{
    const host::ControlName* control;
    std::vector<TuneSetting> settings;
    std::vector<TuneTable> tables;
    std::function<void(TunedAdapter)> reset; // empty: it has none

    /// The adapter of this module. Throws `Failure` when the instrument lacks it. Thread: the session's owner's.
    std::function<TunedAdapter(host::InstrumentSession&)> adapter;

    /// Calls the function with it on the session's thread for calls, as `InstrumentSession::run()` does. Throws
    /// `Failure` when the instrument lacks it. Thread: the session's owner's.
    std::function<void(host::InstrumentSession&, std::function<void(TunedAdapter)>)> run;
};

/// All modules, in the order of registration. Help, completion, listing, JSON and parsing follow from this table.
const std::vector<TuneModule>& tuneModules();

/// Each throws `BadUse`, which names what may have been meant, for an unknown one.
const TuneModule& tuneModuleNamed(const std::string& name);
const TuneSetting& tuneSettingNamed(const TuneModule& module, const std::string& name);
const TuneTable& tuneTableNamed(const TuneModule& module, const std::string& name);

/// Gives `setting` the value that `text` stands for. Throws `BadUse` when the setting is read-only or does not take
/// such a value, and `Failure` when the instrument kept another one; it is given back then what it held before.
void changeSetting(TunedAdapter adapter, const TuneSetting& setting, const std::string& text);

/// The same with a value as `read` gives them, of a setting that can be written.
void changeSetting(TunedAdapter adapter, const TuneSetting& setting, const QJsonValue& asked);

/// What `setting` takes on this instrument, as a column of a table shows it.
std::string allowedBy(TunedAdapter adapter, const TuneSetting& setting);

/// A value as text; one that is not there is "none".
std::string shown(const QJsonValue& value);

} // namespace tov::inline tools

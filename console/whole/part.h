#pragma once

#include "console/whole/savedrow.h"
#include "host/instrumentsession.h"
#include "tools/controls.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tov::console {

/// What brings a row of an instrument to what was saved of it: an action, or why there is none.
struct Restoring
{
    std::function<void(host::InstrumentSession&)> act;
    std::string refusal;
};

/// One part of what an instrument holds: rows under columns. Reports, backups, restoring and comparing follow from it.
struct Part
{
    std::string name;  ///< in files and on the command line
    std::string title; ///< for people

    std::vector<std::string> keys;     ///< the columns that tell a row from the others; none: its place in the list
    std::vector<std::string> compared; ///< those in which two instruments differ
    std::vector<std::string> told;     ///< the others: readings, and the instrument's own figures

    /// The rows. One that cannot be read has its keys and an "error". Throws what keeps it from reading any.
    std::function<QJsonArray(host::InstrumentSession&)> read;

    // NOLINTBEGIN(readability-redundant-member-init): without, gcc takes what is left out for forgotten
    /// The columns that can be written back; none: the part cannot be restored.
    std::vector<std::string> restored = {};

    /// How the row `now`, which is empty when the instrument has none of these keys, becomes as `saved`. Throws
    /// `Failure`, which says what is malformed in `saved` and where; changes nothing.
    std::function<Restoring(const SavedRow& saved, const QJsonObject& now)> restore = {};

    /// Takes a row off the instrument that was not saved; empty where that cannot be.
    std::function<void(host::InstrumentSession&, const QJsonObject& now)> remove = {};

    /// What people read over columns whose names say too little to them.
    std::map<std::string, std::string> headings = {};
    // NOLINTEND(readability-redundant-member-init)
};

/// All parts, in the order in which they are shown and restored: what is written as a whole comes before what may stand
/// in it.
const std::vector<Part>& parts();

/// Those that can be restored, in the same order, and the one of such a name. Throws `BadUse` for another one.
const std::vector<const Part*>& restorableParts();
const Part& restorablePartNamed(const std::string& name);

/// Its rows, or an object that has an "error" only. A value that JSON cannot hold is null.
QJsonValue readPart(host::InstrumentSession& session, const Part& part);

/// What went wrong with a part or a row whose control the instrument lacks.
inline constexpr auto missingControl = "missing";

/// What went wrong with a part or a row; empty when nothing did.
std::string errorOf(const QJsonValue& value);

/// What could not be read of a part, or of one of its rows, though the control is there; otherwise empty.
std::string unread(const QJsonValue& part);

/// The keys of a row in one text, such as "ulk-power/rf-power"; empty without any.
std::string itemOf(const Part& part, const QJsonObject& row);

/// A value of a row for people: contents by their size and the beginning of their digest.
std::string cell(const QJsonValue& value);

// Those parts, from the rooms of the library.
Part controlsPart();
std::vector<Part> memoryParts();
std::vector<Part> storedParts();
std::vector<Part> settingsParts();

/// The control of this kind. Throws `Failure`, which says in a word that it is missing.
template <typename Exposed>
std::shared_ptr<Exposed> present(host::InstrumentSession& session, const host::Control<Exposed>& kind)
{
    if (!session.isPresent(kind))
        throw Failure(missingControl);
    return requireFrom(session, kind);
}

} // namespace tov::console

#pragma once

#include "console/whole/part.h"

#include <functional>
#include <string>
#include <vector>

namespace tov::console {

/// What restoring a part changes in one place of the instrument.
struct Change
{
    std::string part;
    std::string item; // its place in the part; empty when that has only one
    std::string was;
    std::string becomes;
    std::string refusal; // why it cannot be made; otherwise empty
    std::function<void(host::InstrumentSession&)> make;

    bool isTheSameAs(const Change& other) const { return item == other.item && was == other.was; }
};

/// What is to be changed so that the part becomes as `saved`, which stands at `place`. Throws `Failure`, which says
/// what is malformed in it and where; changes nothing.
std::vector<Change> changesTo(host::InstrumentSession& session, const Part& part, const QJsonValue& saved,
                              const std::string& place);

/// A change that was tried, and why it was not made; empty when it was.
struct TriedChange
{
    Change change;
    std::string error;
};

/// Makes the changes as long as that helps, since places of an instrument depend on one another: a value may be taken
/// in another mode only. `planned` is what `changesTo()` gave.
std::vector<TriedChange> restorePart(host::InstrumentSession& session, const Part& part, const QJsonValue& saved,
                                     const std::string& place, const std::vector<Change>& planned);

} // namespace tov::console

#pragma once

#include "console/errors.h"

#include <string>

namespace tov::console {

/// The element of `elements` whose name, which `nameOf` gives, is `name`. Throws `BadUse`, which says
/// that the `what` is unknown and lists the names that there are.
template <typename Elements, typename NameOf>
const auto& named(const Elements& elements, const std::string& name, const std::string& what, NameOf nameOf)
{
    std::string known;
    for (const auto& element : elements) {
        const std::string itsName(nameOf(element));
        if (itsName == name)
            return element;
        known.append(known.empty() ? "; there are " : ", ").append(itsName);
    }
    throw BadUse("unknown " + what + " '" + name + "'" + known);
}

} // namespace tov::console

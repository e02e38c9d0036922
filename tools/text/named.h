#pragma once

#include "tools/text/suggestions.h"

#include <string>
#include <vector>

namespace tov::inline tools {

/// The element of `elements` whose name, which `nameOf` gives, is `name`. Throws `BadUse`, which says
/// that the `what` is unknown and names what may have been meant.
template <typename Elements, typename NameOf>
const auto& named(const Elements& elements, const std::string& name, const std::string& what, NameOf nameOf)
{
    std::vector<std::string> known;
    for (const auto& element : elements)
        if (known.emplace_back(nameOf(element)) == name)
            return element;
    throw unknown("unknown " + what, name, known);
}

} // namespace tov::inline tools

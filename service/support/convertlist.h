#pragma once

#include <type_traits>
#include <vector>

namespace tov::devices::service {

/// Each element of `list` converted by `convert`, in its order, in a vector that is exactly as large.
template <typename Element, typename Convert>
auto convertList(const std::vector<Element>& list, Convert convert)
{
    std::vector<std::invoke_result_t<Convert, const Element&>> converted;
    converted.reserve(list.size());
    for (const Element& element : list)
        converted.push_back(convert(element));
    return converted;
}

} // namespace tov::devices::service

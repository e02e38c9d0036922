#pragma once

#include "devices/reacquiringcontrol.h"
#include "service/support/enumerationmap.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

namespace tov::devices::service {

/// What the SDK operation `Getter` of the control `T` answers.
template <typename T, typename Getter, typename... Arguments>
using Answer = std::invoke_result_t<Getter, T&, Arguments...>;

/// The answer of the SDK operation `getter` with `arguments`, or `absent` without a call when there is no control.
template <typename T, typename Getter, typename... Arguments>
Answer<T, Getter, Arguments...> read(const ReacquiringControl<T>& control,
                                     std::type_identity_t<Answer<T, Getter, Arguments...>> absent, Getter getter,
                                     Arguments... arguments)
{
    if (const auto locked = control.lock())
        return std::invoke(getter, *locked, arguments...);
    return absent;
}

/// The same for a number that `map` makes an enumeration of; its value 0 when there is no control.
template <typename T, typename Enumeration, std::size_t Count, typename Getter, typename... Arguments>
Enumeration readEnumeration(const ReacquiringControl<T>& control, const EnumerationMap<Enumeration, Count>& map,
                            Getter getter, Arguments... arguments)
{
    if (const auto locked = control.lock())
        return map.fromSdk(std::invoke(getter, *locked, arguments...));
    return Enumeration{};
}

/// A copy of the view that the SDK operation `getter` gives, empty when there is no control. The copy
/// is made while the control is held, because the view lives no longer than the control.
template <typename T, typename Element>
std::vector<Element> readList(const ReacquiringControl<T>& control, std::span<const Element> (T::*getter)())
{
    std::vector<Element> copy;
    if (const auto locked = control.lock()) {
        const std::span<const Element> view = std::invoke(getter, *locked);
        copy.reserve(view.size());
        copy.insert(copy.end(), view.begin(), view.end());
    }
    return copy;
}

/// The list or view that the SDK operation `getter` answers with each element converted by `convert`, in its order;
/// empty without a call when there is no control.
template <typename T, typename Getter, typename Convert>
auto readConverted(const ReacquiringControl<T>& control, Getter getter, Convert convert)
{
    using Element = typename Answer<T, Getter>::value_type;
    std::vector<std::invoke_result_t<Convert, Element&&>> converted;
    if (const auto locked = control.lock()) {
        auto answer = std::invoke(getter, *locked);
        converted.reserve(answer.size());
        std::transform(std::make_move_iterator(answer.begin()), std::make_move_iterator(answer.end()),
                       std::back_inserter(converted), convert);
    }
    return converted;
}

/// Calls the SDK operation `setter` with `arguments`; does nothing when there is no control.
template <typename T, typename Setter, typename... Arguments>
void write(const ReacquiringControl<T>& control, Setter setter, Arguments&&... arguments)
{
    if (const auto locked = control.lock())
        std::invoke(setter, *locked, std::forward<Arguments>(arguments)...);
}

/// Ends the registration of `observer` with the SDK when its adapter goes: a control that cannot be found is absent.
/// Should the SDK throw, which it must not, the program ends.
template <typename Handle, typename Observer>
void detachForEver(const Handle& handle, Observer* observer) noexcept
{
    const auto lockIfFound = [&]() -> decltype(handle.lock()) {
        try {
            return handle.lock();
        } catch (...) {
            return {};
        }
    };
    if (const auto locked = lockIfFound())
        locked->removeObserver(observer);
}

} // namespace tov::devices::service

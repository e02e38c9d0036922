#pragma once

// How single numbers cross: none is changed on its way, and what is none is refused.

#include <pybind11/pybind11.h>

#include <concepts>
#include <limits>
#include <string>
#include <type_traits>

namespace tov::python {

namespace py = pybind11;

/// A whole number that must fit into `Integer`; otherwise it is a ValueError.
template <std::integral Integer>
struct Number
{
    Integer value{};
    // Implicit, so that it is passed on as what it is.
    operator Integer() const { return value; } // NOLINT(google-explicit-constructor)
};

template <typename Parameter>
using Passed =
    std::conditional_t<std::integral<std::decay_t<Parameter>> && !std::same_as<std::decay_t<Parameter>, bool>,
                       Number<std::conditional_t<std::integral<std::decay_t<Parameter>>, std::decay_t<Parameter>, int>>,
                       std::decay_t<Parameter>>;

} // namespace tov::python

namespace pybind11::detail {

template <std::integral Integer>
struct type_caster<tov::python::Number<Integer>>
{
    PYBIND11_TYPE_CASTER(tov::python::Number<Integer>, const_name("int"));

    bool load(handle source, bool /*convert*/)
    {
        if (PyIndex_Check(source.ptr()) == 0)
            return false;
        const auto index = reinterpret_steal<object>(PyNumber_Index(source.ptr()));
        if (!index)
            throw error_already_set();
        make_caster<Integer> number;
        if (!number.load(index, false))
            throw value_error(repr(index).cast<std::string>() + " is out of range: from "
                              + std::to_string(std::numeric_limits<Integer>::min()) + " to "
                              + std::to_string(std::numeric_limits<Integer>::max()));
        value.value = number;
        return true;
    }

    static handle cast(tov::python::Number<Integer> number, return_value_policy policy, handle parent)
    {
        return make_caster<Integer>::cast(number.value, policy, parent);
    }
};

} // namespace pybind11::detail

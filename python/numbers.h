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

/// True or False, of Python or of NumPy, and nothing else that could count as one.
struct Flag
{
    bool value = false;
    operator bool() const { return value; } // NOLINT(google-explicit-constructor): as above
};

template <typename Value>
struct Crossing
{
    using Type = Value;
};

template <std::integral Integer>
struct Crossing<Integer>
{
    using Type = Number<Integer>;
};

template <>
struct Crossing<bool>
{
    using Type = Flag;
};

/// What a parameter of this type is taken as.
template <typename Parameter>
using Passed = typename Crossing<std::decay_t<Parameter>>::Type;

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

template <>
struct type_caster<tov::python::Flag>
{
    PYBIND11_TYPE_CASTER(tov::python::Flag, const_name("bool"));

    bool load(handle source, bool /*convert*/)
    {
        make_caster<bool> flag;
        if (!flag.load(source, false))
            return false;
        value.value = flag;
        return true;
    }

    static handle cast(tov::python::Flag flag, return_value_policy policy, handle parent)
    {
        return make_caster<bool>::cast(flag.value, policy, parent);
    }
};

} // namespace pybind11::detail

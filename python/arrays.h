#pragma once

// How bytes cross, and arrays of numbers or of records of numbers.

#include "python/about.h"
#include "python/numbers.h"

#include <QByteArray>

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <cmath>
#include <complex>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace tov::python {

template <typename T>
struct IsRecordOfNumbers : std::false_type
{
};

template <Record T>
struct IsRecordOfNumbers<T>
    : std::bool_constant<std::apply(
          []<typename... Value>(const Field<T, Value>&...) { return (std::is_arithmetic_v<Value> && ...); },
          About<T>::fields)>
{
};

/// What a vector of crosses as an array of NumPy; a record as one with fields.
template <typename T>
concept ArrayElement = std::same_as<T, double> || std::same_as<T, std::complex<double>>
                       || std::same_as<T, unsigned char> || IsRecordOfNumbers<T>::value;

template <ArrayElement T>
py::dtype dtypeOf()
{
    if constexpr (Record<T>) {
        static const T record{};
        py::list names;
        py::list formats;
        py::list offsets;
        const auto add = [&]<typename Value>(const Field<T, Value>& field) {
            names.append(field.name);
            formats.append(py::dtype::of<Value>());
            offsets.append(reinterpret_cast<const std::byte*>(&(record.*field.member))
                           - reinterpret_cast<const std::byte*>(&record));
        };
        std::apply([&](const auto&... field) { (add(field), ...); }, About<T>::fields);
        return {std::move(names), std::move(formats), std::move(offsets), sizeof(T)};
    } else {
        return py::dtype::of<T>();
    }
}

template <ArrayElement T>
constexpr auto arrayName()
{
    using py::detail::const_name;
    if constexpr (Record<T>)
        return const_name("numpy.ndarray[numpy.void]");
    else if constexpr (std::same_as<T, double>)
        return const_name("numpy.ndarray[numpy.float64]");
    else if constexpr (std::same_as<T, unsigned char>)
        return const_name("numpy.ndarray[numpy.uint8]");
    else
        return const_name("numpy.ndarray[numpy.complex128]");
}

/// A field's value. A whole number may be a float too: tables of measured values have nothing else.
template <typename Value>
Value numberOf(py::handle source)
{
    auto number = py::reinterpret_borrow<py::object>(source);
    if (py::hasattr(number, "item"))
        number = number.attr("item")(); // of NumPy's numbers some would convert at a loss
    if constexpr (std::integral<Value>) {
        if (PyFloat_Check(number.ptr())) {
            if (!number.attr("is_integer")().cast<bool>())
                throw py::value_error(py::repr(number).cast<std::string>() + " is no whole number");
            number = py::int_(number);
        }
    }
    py::detail::make_caster<Passed<Value>> converter;
    if (!converter.load(number, true))
        throw py::type_error(py::repr(number).cast<std::string>() + " is no number");
    const Value value = py::detail::cast_op<Passed<Value>>(converter);
    if constexpr (std::floating_point<Value>)
        if (std::isinf(value) && !std::isinf(number.cast<double>()))
            throw py::value_error(py::repr(number).cast<std::string>() + " is out of range");
    return value;
}

/// An array, or one record of it, as Python's own tuples, whose numbers come in the order of the fields.
template <Record T>
py::object tuplesOf(const py::object& values)
{
    const py::object given = values.attr("dtype").attr("names");
    if (given.is_none())
        return values.attr("tolist")();
    const py::list names = dtypeOf<T>().attr("names");
    if (!py::set(given).equal(py::set(names)))
        throw py::value_error("these fields are needed: " + py::str(", ").attr("join")(names).cast<std::string>());
    return values[names].attr("tolist")();
}

template <Record T>
T recordOf(py::handle source)
{
    auto numbers = py::reinterpret_borrow<py::object>(source);
    if (py::hasattr(numbers, "dtype"))
        numbers = tuplesOf<T>(numbers);
    if (!py::isinstance<py::tuple>(numbers))
        throw py::type_error("records are tuples, or of an array with fields");
    constexpr std::size_t count = std::tuple_size_v<decltype(About<T>::fields)>;
    if (py::len(numbers) != count)
        throw py::value_error("a record has " + std::to_string(count) + " numbers");
    T record{};
    auto take = [&, index = std::size_t(0)]<typename Value>(const Field<T, Value>& field) mutable {
        record.*field.member = numberOf<Value>(numbers[py::int_(index++)]);
    };
    std::apply([&](const auto&... field) { (take(field), ...); }, About<T>::fields);
    return record;
}

/// The bytes of what has the buffer protocol, in their order; elements that are no bytes are a ValueError.
inline bool readBytes(py::handle source, auto take)
{
    if (PyObject_CheckBuffer(source.ptr()) == 0)
        return false;
    Py_buffer buffer;
    if (PyObject_GetBuffer(source.ptr(), &buffer, PyBUF_CONTIG_RO) != 0)
        throw py::error_already_set();
    const bool areBytes = buffer.itemsize == 1;
    if (areBytes)
        take(static_cast<const char*>(buffer.buf), buffer.len);
    PyBuffer_Release(&buffer);
    if (!areBytes)
        throw py::value_error("bytes are needed");
    return true;
}

} // namespace tov::python

namespace pybind11::detail {

template <>
struct type_caster<QByteArray>
{
    PYBIND11_TYPE_CASTER(QByteArray, const_name("bytes"));

    bool load(handle source, bool /*convert*/)
    {
        return tov::python::readBytes(source, [this](const char* data, Py_ssize_t size) { value = {data, size}; });
    }

    static handle cast(const QByteArray& data, return_value_policy /*policy*/, handle /*parent*/)
    {
        return bytes(data.constData(), static_cast<size_t>(data.size())).release();
    }
};

template <>
struct type_caster<std::vector<std::byte>>
{
    PYBIND11_TYPE_CASTER(std::vector<std::byte>, const_name("bytes"));

    bool load(handle source, bool /*convert*/)
    {
        return tov::python::readBytes(source, [this](const char* data, Py_ssize_t size) {
            value.resize(static_cast<std::size_t>(size));
            if (size > 0)
                std::memcpy(value.data(), data, value.size());
        });
    }

    static handle cast(const std::vector<std::byte>& data, return_value_policy /*policy*/, handle /*parent*/)
    {
        return bytes(reinterpret_cast<const char*>(data.data()), data.size()).release();
    }
};

template <tov::python::ArrayElement T>
struct type_caster<std::vector<T>>
{
    PYBIND11_TYPE_CASTER(std::vector<T>, tov::python::arrayName<T>());

    bool load(handle source, bool /*convert*/)
    {
        if (!PySequence_Check(source.ptr()) || PyUnicode_Check(source.ptr()))
            return false;
        if constexpr (std::same_as<T, unsigned char>) {
            const object whole = PyObject_CheckBuffer(source.ptr()) != 0
                                     ? reinterpret_borrow<object>(source)
                                     : reinterpret_steal<object>(PyBytes_FromObject(source.ptr()));
            if (!whole)
                throw error_already_set(); // what is no byte
            return tov::python::readBytes(
                whole, [this](const char* data, Py_ssize_t size) { value.assign(data, data + size); });
        } else {
            if constexpr (tov::python::Record<T>)
                loadRecords(source);
            else
                loadNumbers(source);
            return true;
        }
    }

    static handle cast(const std::vector<T>& values, return_value_policy /*policy*/, handle /*parent*/)
    {
        return array(tov::python::dtypeOf<T>(), values.size(), values.data()).release();
    }

private:
    static array arrayFrom(handle source)
    {
        array values = module_::import("numpy").attr("asarray")(source);
        if (values.ndim() != 1)
            throw value_error("an array of one dimension is needed");
        return values;
    }

    void loadRecords(handle source)
    {
        const bool isPlain = isinstance<list>(source) || isinstance<tuple>(source);
        const object rows = isPlain ? reinterpret_borrow<object>(source) : tov::python::tuplesOf<T>(arrayFrom(source));
        value.clear();
        value.reserve(len(rows));
        for (const handle row : rows)
            value.push_back(tov::python::recordOf<T>(row));
    }

    void loadNumbers(handle source)
    {
        // Refuses texts, and complex numbers for real ones.
        const array values = arrayFrom(source).attr("astype")(tov::python::dtypeOf<T>(), arg("order") = "C",
                                                              arg("casting") = "same_kind");
        value.resize(static_cast<std::size_t>(values.size()));
        if (!value.empty())
            std::memcpy(static_cast<void*>(value.data()), values.data(), value.size() * sizeof(T));
    }
};

} // namespace pybind11::detail

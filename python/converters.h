#pragma once

// How values cross: texts, bytes, lists, times, numbers, enumerations, and arrays of numbers or of records of numbers.

#include "python/about.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QVariant>

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <chrono>
#include <complex>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace tov::python {

namespace py = pybind11;

/// The class in Python of an enumeration; lives as long as the interpreter.
template <Enumerated Enumeration>
inline PyObject* enumerationClass = nullptr;

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
struct type_caster<QString>
{
    PYBIND11_TYPE_CASTER(QString, const_name("str"));

    bool load(handle source, bool /*convert*/)
    {
        if (!PyUnicode_Check(source.ptr()))
            return false;
        value = QString::fromStdString(source.cast<std::string>());
        return true;
    }

    static handle cast(const QString& text, return_value_policy /*policy*/, handle /*parent*/)
    {
        return str(text.toStdString()).release();
    }
};

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

template <typename T>
struct type_caster<QList<T>> : list_caster<QList<T>, T>
{
};

/// The values that options of a provider have.
template <>
struct type_caster<QVariant>
{
    PYBIND11_TYPE_CASTER(QVariant, const_name("Union[bool, int, str, List[str]]"));

    static handle cast(const QVariant& variant, return_value_policy policy, handle parent)
    {
        switch (variant.typeId()) {
        case QMetaType::Bool:
            return bool_(variant.toBool()).release();
        case QMetaType::QStringList:
            return make_caster<QList<QString>>::cast(variant.toStringList(), policy, parent);
        case QMetaType::QString:
            return make_caster<QString>::cast(variant.toString(), policy, parent);
        default:
            return int_(variant.toLongLong()).release();
        }
    }
};

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

template <tov::python::Enumerated Enumeration>
struct type_caster<Enumeration>
{
    PYBIND11_TYPE_CASTER(Enumeration, const_name(tov::python::About<Enumeration>::pythonName));

    /// A member, or its number; a number that an instrument gave can be given back, whatever it is.
    bool load(handle source, bool /*convert*/)
    {
        const handle cls(tov::python::enumerationClass<Enumeration>);
        if (!PyLong_Check(source.ptr()))
            return false;
        const object member = isinstance(source, cls) ? reinterpret_borrow<object>(source) : cls(source);
        value = static_cast<Enumeration>(PyLong_AsLong(member.ptr()));
        return true;
    }

    static handle cast(Enumeration number, return_value_policy /*policy*/, handle /*parent*/)
    {
        const handle cls(tov::python::enumerationClass<Enumeration>);
        const auto wanted = static_cast<long>(number);
        for (const auto& each : tov::python::About<Enumeration>::enumerators)
            if (each.value == number)
                return cls(wanted).release();
        object unlisted = type::of(int_(wanted)).attr("__new__")(cls, wanted);
        unlisted.attr("_name_") = "NUMBER" + std::to_string(wanted);
        unlisted.attr("_value_") = wanted;
        return unlisted.release();
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
            loadArray(source);
            return true;
        }
    }

    static handle cast(const std::vector<T>& values, return_value_policy /*policy*/, handle /*parent*/)
    {
        return array(tov::python::dtypeOf<T>(), values.size(), values.data()).release();
    }

private:
    void loadArray(handle source)
    {
        const array values = module_::import("numpy").attr("ascontiguousarray")(source, tov::python::dtypeOf<T>());
        if (values.ndim() != 1)
            throw value_error("an array of one dimension is needed");
        value.resize(static_cast<std::size_t>(values.size()));
        if (!value.empty())
            std::memcpy(static_cast<void*>(value.data()), values.data(), value.size() * sizeof(T));
    }
};

/// Times know their zone; those without one are a ValueError.
struct time_caster
{
    static std::chrono::sys_time<std::chrono::microseconds> sinceEpoch(handle time)
    {
        if (time.attr("tzinfo").is_none())
            throw value_error("a time needs a time zone, such as datetime.timezone.utc");
        const module_ datetime = module_::import("datetime");
        const object epoch =
            datetime.attr("datetime")(1970, 1, 1, arg("tzinfo") = datetime.attr("timezone").attr("utc"));
        const object since = time - epoch;
        using namespace std::chrono;
        return sys_time<microseconds>(days(since.attr("days").cast<int>()) + seconds(since.attr("seconds").cast<int>())
                                      + microseconds(since.attr("microseconds").cast<int>()));
    }

    static bool isTime(handle source) { return isinstance(source, module_::import("datetime").attr("datetime")); }
};

template <>
struct type_caster<QDateTime>
{
    PYBIND11_TYPE_CASTER(QDateTime, const_name("datetime.datetime"));

    bool load(handle source, bool /*convert*/)
    {
        if (!time_caster::isTime(source))
            return false;
        const auto time = std::chrono::floor<std::chrono::milliseconds>(time_caster::sinceEpoch(source));
        value = QDateTime::fromMSecsSinceEpoch(time.time_since_epoch().count(), Qt::UTC);
        return true;
    }
};

template <>
struct type_caster<std::chrono::sys_seconds>
{
    PYBIND11_TYPE_CASTER(std::chrono::sys_seconds, const_name("datetime.datetime"));

    bool load(handle source, bool /*convert*/)
    {
        if (!time_caster::isTime(source))
            return false;
        value = std::chrono::floor<std::chrono::seconds>(time_caster::sinceEpoch(source));
        return true;
    }
};

} // namespace pybind11::detail

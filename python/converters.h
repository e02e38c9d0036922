#pragma once

// How values cross: texts, lists, times and enumerations here, numbers, bytes and arrays beside.

#include "python/about.h"
#include "python/arrays.h"
#include "python/numbers.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QVariant>

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <chrono>
#include <string>

namespace tov::python {

/// The class in Python of an enumeration; lives as long as the interpreter.
template <Enumerated Enumeration>
inline PyObject* enumerationClass = nullptr;

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

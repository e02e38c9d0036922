#pragma once

// Classes of Python for the records and enumerations of the headers.

#include "python/converters.h"

#include <QString>

#include <algorithm>
#include <concepts>
#include <functional>
#include <string>
#include <tuple>
#include <utility>

namespace tov::python {

/// The name behind the last dot.
template <typename T>
constexpr const char* shortName()
{
    const char* name = About<T>::pythonName;
    for (const char* each = name; *each != '\0'; ++each)
        if (*each == '.')
            name = each + 1;
    return name;
}

/// Adds an `enum.IntEnum` to `scope`.
template <Enumerated Enumeration>
void bindEnumeration(py::handle scope)
{
    const py::module_ module = py::module_::import("enum");
    py::list members;
    std::string doc = About<Enumeration>::doc;
    doc += "\n";
    for (const auto& each : About<Enumeration>::enumerators) {
        members.append(py::make_tuple(each.name, static_cast<long>(each.value)));
        doc.append("\n").append(each.name).append(": ").append(each.doc);
    }
    py::object type = module.attr("IntEnum")(shortName<Enumeration>(), members, py::arg("module") = "devicesservice",
                                             py::arg("qualname") = About<Enumeration>::pythonName);
    type.attr("__doc__") = doc;
    scope.attr(shortName<Enumeration>()) = type;
    enumerationClass<Enumeration> = type.release().ptr();
}

template <typename T>
void bindNested(py::handle scope);

template <typename T>
bool areEqual(const T& one, const T& other);

template <typename List>
concept ListOfRecords = Record<typename List::value_type>;

template <typename Value>
bool areEqualValues(const Value& one, const Value& other)
{
    if constexpr (ListOfRecords<Value>)
        return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                          [](const auto& first, const auto& second) { return areEqual(first, second); });
    else if constexpr (std::is_floating_point_v<Value>)
        return std::equal_to<>()(one, other);
    else
        return one == other;
}

template <typename T>
bool areEqual(const T& one, const T& other)
{
    return std::apply(
        [&](const auto&... field) { return (areEqualValues(one.*field.member, other.*field.member) && ...); },
        About<T>::fields);
}

/// A field as scripts read it. An instrument's texts need not be UTF-8; what is not is replaced.
template <typename Value>
auto readable(const Value& value)
{
    if constexpr (std::same_as<Value, std::string>)
        return QString::fromStdString(value);
    else
        return value;
}

/// Adds a class with the fields of `T`, which cannot be changed, to `scope`; enumerations and records that belong to it
/// come first.
template <Record T, typename... Nested>
py::class_<T> bindDescription(py::handle scope)
{
    py::class_<T> type(scope, shortName<T>(), About<T>::doc);
    (bindNested<Nested>(type), ...);
    const auto define = [&]<typename... Value>(const Field<T, Value>&... field) {
        (type.def_property_readonly(
             field.name, [member = field.member](const T& record) { return readable(record.*member); }, field.doc),
         ...);
        type.def("__repr__", [=](py::handle self) {
            std::string text = shortName<T>();
            const char* before = "(";
            ((text.append(std::exchange(before, ", "))
                  .append(field.name)
                  .append("=")
                  .append(py::repr(self.attr(field.name)).template cast<std::string>())),
             ...);
            return text + ")";
        });
    };
    std::apply(define, About<T>::fields);
    return type;
}

/// The same for what scripts make too, from its fields.
template <Record T, typename... Nested>
void bindRecord(py::handle scope)
{
    py::class_<T> type = bindDescription<T, Nested...>(scope);
    const auto define = [&]<typename... Value>(const Field<T, Value>&... field) {
        const T usual{};
        type.def(py::init([](Passed<Value>... values) { return T{static_cast<Value>(std::move(values))...}; }),
                 (py::arg(field.name) = usual.*field.member)...);
        type.def("__eq__", [](const T& one, const T& other) { return areEqual(one, other); }, py::is_operator());
        type.attr("__hash__") = py::none();
    };
    std::apply(define, About<T>::fields);
}

template <typename T>
void bindNested(py::handle scope)
{
    if constexpr (Enumerated<T>)
        bindEnumeration<T>(scope);
    else
        bindRecord<T>(scope);
}

} // namespace tov::python

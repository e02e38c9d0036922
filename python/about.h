#pragma once

#include <array>
#include <string_view>
#include <tuple>

namespace tov::python {

/// An operation as a header has it, and as Python knows it.
struct Operation
{
    const char* name;   ///< in C++
    const char* python; ///< that of the property, for a getter and its setter
    const char* doc;
    const char* setter; ///< of what this gets; empty if there is none
    std::array<const char*, 4> parameters;
};

template <typename Enumeration>
struct Enumerator
{
    const char* name;
    Enumeration value;
    const char* doc;
};

template <typename Record, typename Value>
struct Field
{
    const char* name;
    Value Record::* member;
    const char* doc;
};

/// What the header of `T` says of it; specialised for each by headerfacts.py.
template <typename T>
struct About;

template <typename T>
concept Enumerated = requires { About<T>::enumerators; };

template <typename T>
concept Record = requires { About<T>::fields; };

/// An operation of `T` by its name in C++; what has none does not compile.
template <typename T>
struct Named
{
    // Implicit, so that bindings simply name what they bind.
    // NOLINTNEXTLINE(google-explicit-constructor)
    consteval Named(const char* name)
        : operation(find(name))
        , setter(*operation->setter != '\0' ? find(operation->setter) : nullptr)
    {
    }

    static consteval const Operation* find(std::string_view name)
    {
        for (const Operation& each : About<T>::operations)
            if (each.name == name)
                return &each;
        throw "there is no operation of this name";
    }

    const Operation* operation;
    const Operation* setter; ///< null where there is none
};

} // namespace tov::python

#pragma once

#include "python/facts.h"
#include "python/instrument.h"
#include "python/records.h"

#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace tov::python {

/// A control of an open instrument, as scripts have it. Keeps the instrument open.
template <typename Adapter>
struct ControlOf
{
    std::shared_ptr<Instrument> instrument;
    std::shared_ptr<Attached<Adapter>> attached;
    host::ControlName kind;

    /// Calls the adapter without the interpreter's lock, and gives what comes of it.
    template <typename Call>
    auto call(const Call& function) const
    {
        const WithoutLock unlocked;
        if (instrument->isStrict() && !asFailure([this] { return instrument->offers(kind); }))
            throw host::ControlAbsent(kind);
        const auto forward = [&] { return function(*attached->adapter); };
        if constexpr (std::is_void_v<decltype(forward())>)
            asFailure(forward);
        else
            return valueOf(asFailure(forward));
    }
};

/// Makes the class of a control, operation by operation. Names and docstrings are those of the header.
template <typename Adapter>
class Binding
{
    using Self = ControlOf<Adapter>;

public:
    explicit Binding(py::module_& module)
        : m_class(module, About<Adapter>::pythonName, About<Adapter>::doc)
    {
        m_class.def_property_readonly(
            "is_present",
            [](const Self& self) {
                const WithoutLock unlocked;
                return asFailure([&] { return self.instrument->offers(self.kind); });
            },
            "Whether the instrument offers the control now.");
    }

    /// An enumeration or a record that belongs to the adapter.
    template <typename T>
    Binding& has()
    {
        bindNested<T>(m_class);
        return *this;
    }

    /// What is read, as a property.
    template <typename Getter>
    Binding& reads(Named<Adapter> name, Getter getter)
    {
        m_class.def_property_readonly(bound(name)->python, reading(getter), name.operation->doc);
        return *this;
    }

    /// What is read and set, as a property.
    template <typename Getter, typename Value>
    Binding& tunes(Named<Adapter> name, Getter getter, void (Adapter::*setter)(Value))
    {
        if (name.setter == nullptr)
            throw std::logic_error(std::string("nothing sets ") + name.operation->name);
        m_bound.insert(name.setter->name);
        m_class.def_property(
            bound(name)->python, reading(getter),
            py::cpp_function(
                [setter](const Self& self, Passed<Value> value) {
                    self.call([&](Adapter& adapter) { (adapter.*setter)(static_cast<std::decay_t<Value>>(value)); });
                },
                py::name(name.operation->python), py::is_method(m_class), py::arg("value")),
            name.operation->doc);
        return *this;
    }

    /// An operation that takes as long as the SDK does.
    template <typename Function>
    Binding& does(Named<Adapter> name, Function function)
    {
        return define(*bound(name), function, [] {});
    }

    /// An operation that waits for the instrument's answer.
    template <typename Function>
    Binding& waits(Named<Adapter> name, Function function)
    {
        return define(*bound(name), function, refuseInCallback);
    }

    /// A notification of an observer, to which callables subscribe.
    template <typename Observer, typename Owner, typename... Arguments>
    Binding& notifies(Named<Observer> name, Callables<Arguments...> Owner::* callables)
    {
        return subscribes<Arguments...>(*bound(name), [callables](const Self& self, py::function callable) {
            return (self.attached->relay.*callables).subscribe(std::move(callable));
        });
    }

    /// A signal of the adapter's.
    template <typename... Arguments>
    Binding& emits(Named<Adapter> name, void (Adapter::*signal)(Arguments...))
    {
        return subscribes<Arguments...>(*bound(name), [signal](const Self& self, py::function callable) {
            return subscribe(*self.attached->adapter, signal, std::move(callable));
        });
    }

    /// Further operations, for which there is no word above.
    template <typename Define>
    Binding& further(Named<Adapter> name, Define how)
    {
        how(m_class, *bound(name));
        return *this;
    }

    /// Throws when an operation was forgotten, of the adapter or of an observer.
    template <typename... Observer>
    void complete() const
    {
        (lookForAll<Observer>(), ...);
        lookForAll<Adapter>();
    }

private:
    template <typename... Arguments, typename Subscribe>
    Binding& subscribes(const Operation& operation, Subscribe subscribe);

    template <typename T>
    const Operation* bound(Named<T> name)
    {
        m_bound.insert(name.operation->name);
        return name.operation;
    }

    template <typename T>
    void lookForAll() const
    {
        for (const Operation& each : About<T>::operations)
            if (!m_bound.contains(each.name))
                throw std::logic_error(std::string("not bound: ") + About<T>::pythonName + "::" + each.name);
    }

    template <typename Getter>
    static auto reading(Getter getter)
    {
        return [getter](const Self& self) {
            return self.call([&](Adapter& adapter) { return std::invoke(getter, adapter); });
        };
    }

    template <typename Result, typename Class, typename... Parameters, typename Before>
    Binding& define(const Operation& operation, Result (Class::*function)(Parameters...), Before before)
    {
        return defineAs<Parameters...>(operation, function, before, std::index_sequence_for<Parameters...>());
    }

    template <typename Result, typename Class, typename... Parameters, typename Before>
    Binding& define(const Operation& operation, Result (Class::*function)(Parameters...) const, Before before)
    {
        return defineAs<Parameters...>(operation, function, before, std::index_sequence_for<Parameters...>());
    }

    template <typename Result, typename... Parameters, typename Before>
    Binding& define(const Operation& operation, Result (*function)(Adapter&, Parameters...), Before before)
    {
        return defineAs<Parameters...>(operation, function, before, std::index_sequence_for<Parameters...>());
    }

    template <typename... Parameters, typename Function, typename Before, std::size_t... index>
    Binding& defineAs(const Operation& operation, Function function, Before before,
                      std::index_sequence<index...> /*all*/)
    {
        m_class.def(
            operation.python,
            [function, before](const Self& self, Passed<Parameters>... arguments) {
                before();
                return self.call([&](Adapter& adapter) {
                    return std::invoke(function, adapter,
                                       static_cast<std::decay_t<Parameters>>(std::move(arguments))...);
                });
            },
            py::arg(operation.parameters[index])..., operation.doc);
        return *this;
    }

    py::class_<Self> m_class;
    std::set<std::string_view> m_bound;
};

/// A callable for a notification with these arguments.
template <typename... Arguments>
struct CallableFor
{
    py::function function;
};

template <typename Adapter>
template <typename... Arguments, typename Subscribe>
Binding<Adapter>& Binding<Adapter>::subscribes(const Operation& operation, Subscribe subscribe)
{
    m_class.def(
        operation.python,
        [subscribe](const Self& self, CallableFor<std::decay_t<Arguments>...> callable) {
            self.instrument->refuseWhenClosed();
            return self.instrument->remember(subscribe(self, std::move(callable.function)));
        },
        py::arg("callback"), operation.doc);
    return *this;
}

} // namespace tov::python

namespace pybind11::detail {

template <typename... Arguments>
struct type_caster<tov::python::CallableFor<Arguments...>>
{
    PYBIND11_TYPE_CASTER(tov::python::CallableFor<Arguments...>,
                         const_name("Callable[[") + concat(make_caster<Arguments>::name...) + const_name("], object]"));

    bool load(handle source, bool /*convert*/)
    {
        if (PyCallable_Check(source.ptr()) == 0)
            return false;
        value.function = reinterpret_borrow<function>(source);
        return true;
    }
};

} // namespace pybind11::detail

#include "host/providers.h"
#include "python/binding.h"
#include "python/rooms.h"

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace tov::python {

using provider::ITestHooks;

namespace {

using Options = std::vector<std::pair<QString, QString>>;

// What was asked for wrongly is a ValueError.
template <typename Value>
Value orValueError(provider::Result<Value> result)
{
    if (!result)
        throw py::value_error(result.error().toStdString());
    if constexpr (!std::is_void_v<Value>)
        return *std::move(result);
}

host::ProviderChoice chosen(const QString& provider, const Options& options)
{
    auto choice = withoutTheLock([&] { return orValueError(host::chooseProvider(provider)); });
    for (const auto& [name, text] : options)
        orValueError(host::setOption(choice, name, text));
    return choice;
}

std::string attributeOf(const host::ControlName& kind)
{
    std::string name(kind.name);
    std::ranges::replace(name, '-', '_');
    return name;
}

const host::ControlName& kindNamed(const std::string& attribute)
{
    for (const host::ControlName& each : host::controls::all)
        if (attributeOf(each) == attribute)
            return each;
    throw py::value_error("there is no control '" + attribute + "'");
}

std::vector<std::string> presentControls(const Instrument& instrument)
{
    instrument.refuseWhenClosed();
    const WithoutLock unlocked;
    std::vector<std::string> present;
    for (const host::ControlName& each : host::controls::all)
        if (asFailure([&] { return instrument.offers(each); }))
            present.push_back(attributeOf(each));
    return present;
}

// Milliseconds are what hooks know.
std::chrono::milliseconds milliseconds(double seconds)
{
    return std::chrono::round<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
}

using InstrumentClass = py::class_<Instrument, std::shared_ptr<Instrument>>;

void defineHooks(InstrumentClass& type)
{
    const auto doc = [](Named<ITestHooks> name) { return name.operation->doc; };
    type.def("abilities", &Instrument::abilities, doc("abilities"))
        .def(
            "release_controls",
            [](Instrument& self) { self.byHooks([](ITestHooks& hooks) { return hooks.releaseControls(); }); },
            doc("releaseControls"))
        .def(
            "offer_controls",
            [](Instrument& self) { self.byHooks([](ITestHooks& hooks) { return hooks.offerControls(); }); },
            doc("offerControls"))
        .def(
            "notify",
            [](Instrument& self, const std::string& control) {
                const sdk::Key key = kindNamed(control).keys.sdk;
                self.byHooks([&](ITestHooks& hooks) { return hooks.notify(key); });
            },
            py::arg("control"), doc("notify"))
        .def(
            "set_answer",
            [](Instrument& self, const std::string& control, const QString& operation, ITestHooks::Answer answer) {
                const sdk::Key key = kindNamed(control).keys.sdk;
                self.byHooks([&](ITestHooks& hooks) { return hooks.setAnswer(key, operation, answer); });
            },
            py::arg("control"), py::arg("operation"), py::arg("answer"), doc("setAnswer"))
        .def(
            "pass_time",
            [](Instrument& self, double seconds) {
                self.byHooks([&](ITestHooks& hooks) { return hooks.passTime(milliseconds(seconds)); });
            },
            py::arg("seconds"), doc("passTime"))
        .def(
            "wait_until_quiet",
            [](Instrument& self) { self.byHooks([](ITestHooks& hooks) { return hooks.waitUntilQuiet(); }); },
            doc("waitUntilQuiet"));
}

template <typename Adapter>
void defineControl(InstrumentClass& type, const host::Control<Adapter>& kind)
{
    const std::string doc = std::string("The control ") + std::string(kind.name)
                            + "; raises `ControlAbsent` when the instrument lacks it.\n\n" + About<Adapter>::doc;
    type.def_property_readonly(
        attributeOf(kind).c_str(),
        [kind](Instrument& self) { return ControlOf<Adapter>{self.shared_from_this(), self.attached(kind), kind}; },
        doc.c_str());
}

void bindInstrument(py::module_& module)
{
    InstrumentClass type(module, "Instrument",
                         "An open instrument, and a context manager that closes it.\n\n"
                         "Any thread may use it and its controls. It hears by itself when the instrument's controls go "
                         "and come.");
    bindEnumeration<ITestHooks::Ability>(type);
    bindEnumeration<ITestHooks::Answer>(type);
    type.def_property_readonly("description", &Instrument::description, "The instrument as its provider lists it.")
        .def_property_readonly("provider", &Instrument::provider, "What opened it.")
        .def_property(
            "strict", &Instrument::isStrict, [](Instrument& self, Flag strict) { self.setStrict(strict); },
            "Whether operations of a control that is absent by now raise `ControlAbsent`. Otherwise getters "
            "give their defaults, and setters do nothing.")
        .def_property_readonly("closed", &Instrument::isClosed, "Whether it was closed.")
        .def_property_readonly(
            "present_controls", presentControls,
            "The names of the controls that the instrument offers now, as its attributes spell them.")
        .def("close", &Instrument::close,
             "Closes it, and waits for that. Subscriptions end, and its controls are absent from then on. Not in a "
             "callback; a second time does nothing.")
        .def("keep", &Instrument::keep, "Makes what was changed lasting, where the provider does that.")
        .def("__enter__", [](py::object self) { return self; })
        .def("__exit__", [](Instrument& self, const py::args& /*raised*/) { self.close(); })
        .def("__repr__", [](const Instrument& self) {
            return "<Instrument '" + self.description().id.toStdString() + "' of '" + self.provider().name.toStdString()
                   + "'" + (self.isClosed() ? ", closed>" : ">");
        });
    defineHooks(type);
    std::apply([&](const auto&... kind) { (defineControl(type, kind), ...); }, host::controls::kinds);
}

} // namespace

void bindInstruments(py::module_& module)
{
    bindDescription<host::ProviderOption, host::ProviderOption::Type>(module);
    bindDescription<host::ProviderDescription>(module);
    bindDescription<host::RefusedFile>(module);
    bindDescription<host::Providers>(module);
    bindDescription<provider::InstrumentDescription>(module);
    bindInstrument(module);

    module.def(
        "find_providers", [] { return withoutTheLock(host::findProviders); },
        "Looks for providers in the folders that DEVICESSERVICE_PROVIDER_PATH lists, and in that of the installed "
        "ones.");
    module.def(
        "find_instruments",
        [](const QString& provider) {
            refuseInCallback();
            const host::ProviderDescription description = chosen(provider, {}).provider;
            return withoutTheLock([&] { return Instrument::find(description); });
        },
        py::arg("provider") = QString(),
        "The instruments that a provider could open now; the provider is named as for `open()`. Raises `ValueError` "
        "when there is no such provider, and `OperationFailed` when it fails.");
    module.def(
        "open_chosen",
        [](const QString& provider, const Options& options, Flag strict) {
            return Instrument::open(chosen(provider, options), strict);
        },
        py::arg("provider"), py::arg("options"), py::arg("strict"), "What `open()` calls, with options as texts.");
}

} // namespace tov::python

#include "python/binding.h"
#include "python/rooms.h"

namespace tov::python {

namespace {

using Lent = decltype(std::declval<SdkCalibrationControlHandle>().lock());

// As an array of its segments.
template <typename Adapter>
auto frequencyPlan(const Adapter& adapter)
{
    return adapter.frequencyPlan().segments;
}

template <typename Adapter>
Binding<Adapter>& bindObservers(Binding<Adapter>& binding)
{
    using Observer = typename Adapter::Observer;
    using AdaptersRelay = CalibrationRelay<Adapter>;
    return binding.template notifies<Observer>("onFirstEvent", &AdaptersRelay::first)
        .template notifies<Observer>("onSecondEvent", &AdaptersRelay::second)
        .template notifies<Observer>("onThirdEvent", &AdaptersRelay::third)
        .template notifies<Observer>("onStateChanged", &AdaptersRelay::state);
}

// What was lent may be the last that holds the control, whose end may wait.
void giveBack(Lent& lent)
{
    withoutTheLock([&] { lent = Lent(); });
}

struct LentController
{
    explicit LentController(Lent lent)
        : controller(std::move(lent))
    {
    }
    LentController(const LentController&) = delete;
    LentController& operator=(const LentController&) = delete;
    ~LentController() { giveBack(controller); }

    Lent controller;
};

void bindLentController(py::module_& module)
{
    py::class_<LentController>(module, "LentController",
                               "A calibration controller that stays as long as this does, until it is closed.")
        .def("__bool__", [](const LentController& self) { return static_cast<bool>(self.controller); })
        .def(
            "close", [](LentController& self) { giveBack(self.controller); }, "Gives the controller back.")
        .def("__enter__", [](py::object self) { return self; })
        .def("__exit__", [](LentController& self, const py::args& /*raised*/) { giveBack(self.controller); });
}

} // namespace

void bindCalibration(py::module_& module)
{
    bindEnumeration<FactoryCorrection>(module);
    bindEnumeration<CalibrationState>(module);

    using Ifsw = SdkYqIfswCalibrationControl;
    Binding<Ifsw> ifsw(module);
    ifsw.has<Ifsw::IfswCalibrationGroup>()
        .has<Ifsw::IfswCalibrationData>()
        .reads("frequencyPlan", frequencyPlan<Ifsw>)
        .does("saveCalibrationData", &Ifsw::saveCalibrationData);
    bindObservers(ifsw).complete<Ifsw::Observer>();

    using Power = SdkYqFactoryPowerCalibrationControl;
    Binding<Power> power(module);
    power.reads("frequencyPlan", frequencyPlan<Power>).does("saveCalibrationData", &Power::saveCalibrationData);
    bindObservers(power).complete<Power::Observer>();

    using Corrections = SdkFactoryCorrectionControl;
    using CorrectionsRelay = Relay<Corrections>;
    Binding<Corrections>(module)
        .reads("supported", &Corrections::supported)
        .does("isValid", &Corrections::isValid)
        .does("isEnabled", &Corrections::isEnabled)
        .does("isModifiable", &Corrections::isModifiable)
        .does("setEnabled", &Corrections::setEnabled)
        .notifies<Corrections::Observer>("onCorrectionsChanged", &CorrectionsRelay::corrections)
        .notifies<Corrections::Observer>("onCorrectionStatesChanged", &CorrectionsRelay::states)
        .notifies<Corrections::Observer>("onEnabledChanged", &CorrectionsRelay::enabled)
        .complete<Corrections::Observer>();

    bindLentController(module);
    using Handle = SdkCalibrationControlHandle;
    using HandlesRelay = Relay<Handle>;
    Binding<Handle>(module)
        .further("lock",
                 [](py::class_<ControlOf<Handle>>& type, const Operation& operation) {
                     type.def(
                         operation.python,
                         [](const ControlOf<Handle>& self) {
                             return std::make_unique<LentController>(
                                 self.call([](Handle& handle) { return handle.lock(); }));
                         },
                         operation.doc);
                 })
        .emits("controlsAboutToBeReleased", &Handle::controlsAboutToBeReleased)
        .emits("controlsAvailable", &Handle::controlsAvailable)
        .notifies<SdkCalibrationControlWatcher>("unitStatusChanged", &HandlesRelay::unitStatus)
        .notifies<SdkCalibrationControlWatcher>("saveProgressChanged", &HandlesRelay::saveProgress)
        .notifies<SdkCalibrationControlWatcher>("configurationChanged", &HandlesRelay::configuration)
        .complete<SdkCalibrationControlWatcher>();
}

} // namespace tov::python

#include "python/instrument.h"
#include "python/rooms.h"

namespace {

using namespace tov;
using namespace tov::python;

void bindErrors(py::module_& module)
{
    const py::exception<void> error(module, "Error");
    error.attr("__doc__") = "The instrument lacks a control, or did not do what was asked for.";
    py::register_exception<OperationFailed>(module, "OperationFailed", error).attr("__doc__") =
        "The instrument did not do what was asked for; says why, if the instrument does.";
    py::register_exception<host::ControlAbsent>(module, "ControlAbsent", error).attr("__doc__") =
        "The instrument does not have the control.";
}

} // namespace

PYBIND11_MODULE(_devicesservice, module)
{
    module.doc() = "Service controls of vector network analysers.";
    // What scripts see is of the package.
    const py::object name = module.attr("__name__");
    module.attr("__name__") = "devicesservice";
    bindErrors(module);
    bindSubscriptions(module);
    bindMemory(module);
    bindCalibration(module);
    bindMonitoring(module);
    bindTuning(module);
    bindInstruments(module);
    module.attr("__name__") = name;

    // Before the interpreter goes nobody is told any more.
    py::module_::import("atexit").attr("register")(py::cpp_function(&Instrument::closeAll));
}

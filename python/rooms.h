#pragma once

#include <pybind11/pybind11.h>

namespace tov::python {

// Each adds the controls of a room, and what crosses with them.
void bindMemory(pybind11::module_& module);
void bindCalibration(pybind11::module_& module);
void bindMonitoring(pybind11::module_& module);
void bindTuning(pybind11::module_& module);

/// Adds what notifications are subscribed to by.
void bindSubscriptions(pybind11::module_& module);

/// Adds what opens instruments, and instruments with the controls of all rooms.
void bindInstruments(pybind11::module_& module);

} // namespace tov::python

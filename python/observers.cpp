#include "python/observers.h"

#include "python/rooms.h"

#include <QScopedValueRollback>

#include <exception>
#include <stdexcept>

namespace tov::python {

namespace {

// A flag without a destructor. NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): a thread's own
thread_local bool inCallback = false;

void reportUnraisable(const py::function& callable, const std::exception& error)
{
    PyErr_SetString(PyExc_RuntimeError, error.what());
    PyErr_WriteUnraisable(callable.ptr());
}

} // namespace

bool isInCallback()
{
    return inCallback;
}

void refuseInCallback()
{
    if (inCallback)
        throw std::runtime_error("this waits for the instrument, which waits for the end of this callback");
}

Subscriber::~Subscriber()
{
    if (!m_callable)
        return;
    if (Py_IsInitialized() == 0) {
        m_callable.release(); // nobody is left to give it to
        return;
    }
    const WithLock locked;
    close();
}

void Subscriber::call(const std::function<void(const py::function&)>& how)
{
    if (Py_IsInitialized() == 0)
        return;
    const WithLock locked;
    const py::function callable = m_callable; // stays if it closes itself
    if (!callable)
        return;
    const QScopedValueRollback telling(inCallback, true);
    try {
        how(callable);
    } catch (py::error_already_set& error) {
        error.discard_as_unraisable(callable);
    } catch (const std::exception& error) {
        reportUnraisable(callable, error);
    }
}

void bindSubscriptions(py::module_& module)
{
    py::class_<Subscription>(module, "Subscription",
                             "A callable that hears of a notification until this is closed, or the instrument. Letting "
                             "go of this object changes nothing.")
        .def_property_readonly("closed", &Subscription::isClosed, "Whether it has ended.")
        .def("close", &Subscription::close,
             "Ends it: no call begins any more. Waits for nothing, so that it may be called in the callback too.")
        .def("__enter__", [](py::object self) { return self; })
        .def("__exit__", [](Subscription& self, const py::args& /*raised*/) { self.close(); });
}

} // namespace tov::python

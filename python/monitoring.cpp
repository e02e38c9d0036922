#include "python/binding.h"
#include "python/rooms.h"

namespace tov::python {

void bindMonitoring(py::module_& module)
{
    Binding<SdkTemperatureControl>(module)
        .has<SdkTemperatureControl::ModuleTemperature>()
        .reads("temperature", &SdkTemperatureControl::temperature)
        .reads("modulesTemperature", &SdkTemperatureControl::modulesTemperature)
        .emits("temperaturesChanged", &SdkTemperatureControl::temperaturesChanged)
        .complete();
}

} // namespace tov::python

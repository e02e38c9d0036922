#include "operations/operations.h"
#include "operations/row.h"
#include "service/monitoring/sdktemperaturecontrol.h"
#include "testing/faketemperaturecontrol.h"

#include <string>
#include <vector>

namespace tov::testing {

using devices::service::SdkTemperatureControl;

namespace {

/// A control with two modules.
class TwoModules final : public FakeTemperatureControl
{
public:
    TwoModules() { modules = {{"a module with a long name", 1.5F}, {"b", -2.0F}}; }
};

using Texts = std::vector<std::string>;

Texts modulesOf(const SdkTemperatureControl& adapter)
{
    Texts texts;
    for (const auto& module : adapter.modulesTemperature())
        texts.push_back(module.name.toStdString() + ' ' + exactly(module.temperature));
    return texts;
}

// The readings come from the last announcement.
auto afterAnnouncement(auto reading)
{
    return [reading](SdkTemperatureControl& adapter) {
        adapter.onControlsAvailable();
        return std::invoke(reading, adapter);
    };
}

} // namespace

Operations temperatureOperations()
{
    using Adapter = SdkTemperatureControl;
    const std::vector<std::string> announced = {"addObserver()", "modulesTemperature()", "temperature()"};
    auto temperature =
        readsBy<Adapter>("temperature", afterAnnouncement(&Adapter::temperature), 0.0, SdkAnswers{36.5F}, 36.5)
            .keeping();
    temperature.sdkCalls = announced;
    auto modules = readsBy<Adapter>("modulesTemperature", afterAnnouncement(modulesOf), Texts{}, SdkAnswers{0},
                                    Texts{"a module with a long name 1.5", "b -2"})
                       .keeping();
    modules.sdkCalls = announced;
    return operations<Adapter, sdk::ITemperatureControl, TwoModules>(
        std::vector<Row<Adapter>>{temperature, modules}
        + lifecycle<Adapter>({"modulesTemperature()", "temperature()"}));
}

} // namespace tov::testing

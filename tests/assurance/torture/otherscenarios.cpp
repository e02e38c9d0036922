#include "attempt.h"
#include "devices/controlregistry.h"
#include "devices/controls.h"
#include "scenario.h"
#include "service/calibration/frequencyplanconversion.h"
#include "service/servicecontrols.h"

#include <memory>

namespace tov::testing {

std::vector<Scenario> otherScenarios()
{
    return {{"registration",
             [](Complaints& complaints) {
                 auto registry = std::make_unique<devices::ControlRegistry>();
                 attempt([&] { devices::service::servicecontrols::registrate(registry.get()); },
                         [&] {
                             registry = std::make_unique<devices::ControlRegistry>();
                             devices::service::servicecontrols::registrate(registry.get());
                         });
                 complaints.expect(registry->entries().size() == devices::controls::all.size(), "all are registered");
             }},
            {"conversion of a frequency plan", [](Complaints& complaints) {
                 const sdk::FrequencyPlan plan{{{1.0, 2.0, 3}, {4.0, 5.0, 6}}};
                 std::vector<vna::FrequencySegment> segments;
                 sdk::FrequencyPlan back;
                 attempt([&] { segments = devices::service::fromSdkFrequencyPlan(plan); });
                 attempt([&] { back = devices::service::toSdkFrequencyPlan(segments); });
                 complaints.expect(back.segments.size() == 2 && back.segments[1].points == 6, "the plan is the same");
             }}};
}

} // namespace tov::testing

#include "countingobserver.h"
#include "operations/operations.h"
#include "operations/row.h"
#include "service/calibration/sdkcalibrationcontrolhandle.h"
#include "service/calibration/sdkfactorycorrectioncontrol.h"
#include "service/calibration/sdkyqfactorypowercalibrationcontrol.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"
#include "testing/fakecalibrationcontrol.h"
#include "testing/fakecalibrationcontroller.h"
#include "testing/fakefactorycorrectioncontrol.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tov::testing {

using namespace devices::service;
using devices::FactoryCorrection;

namespace {

/// What happens to an observer that is registered with the SDK for itself, and is removed at the end.
template <typename Adapter>
std::vector<Row<Adapter>> observing()
{
    const auto observer = std::make_shared<CountingObserver<Adapter>>();
    const auto whileItObserves = [observer](auto action) {
        return [observer, action](Adapter& adapter) {
            try {
                adapter.addObserver(observer.get());
                action(adapter);
            } catch (...) {
                adapter.removeObserver(observer.get());
                throw;
            }
            adapter.removeObserver(observer.get());
        };
    };
    const std::vector<std::string> cleaningUp = {"removeObserver()"};
    return {
        does<Adapter>("addObserver", {"addObserver()", "removeObserver()"}, whileItObserves([](Adapter&) {}))
            .inSteps(cleaningUp),
        does<Adapter>("removeObserver", {"addObserver()", "removeObserver()"},
                      whileItObserves([observer](Adapter& adapter) { adapter.removeObserver(observer.get()); }))
            .inSteps(cleaningUp),
        does<Adapter>("onControlsAboutToBeReleased", {"addObserver()", "removeObserver()", "removeObserver()"},
                      whileItObserves([](Adapter& adapter) { adapter.onControlsAboutToBeReleased(); }))
            .inSteps(cleaningUp),
        does<Adapter>("onControlsAvailable", {"addObserver()", "removeObserver()", "addObserver()", "removeObserver()"},
                      whileItObserves([](Adapter& adapter) {
                          adapter.onControlsAboutToBeReleased();
                          adapter.onControlsAvailable();
                      }))
            .inSteps(cleaningUp),
    };
}

template <typename Adapter>
Row<Adapter> readsFrequencyPlan()
{
    // The segments one after the other.
    using Numbers = std::vector<double>;
    const auto numbersOf = [](const Adapter& adapter) {
        Numbers numbers;
        for (const auto& segment : adapter.frequencyPlan().segments)
            numbers.insert(numbers.end(), {segment.start, segment.stop, static_cast<double>(segment.points)});
        return numbers;
    };
    return readsBy<Adapter>("frequencyPlan", numbersOf, Numbers{},
                            SdkAnswers{sdk::FrequencyPlan{{{1e9, 2e9, 3}, {4.0, 5.0, -6}}}},
                            Numbers{1e9, 2e9, 3.0, 4.0, 5.0, -6.0});
}

SdkYqIfswCalibrationControl::IfswCalibrationData oneOfEach()
{
    SdkYqIfswCalibrationControl::IfswCalibrationData data;
    data.values = {1.0};
    for (auto& group : data.groups)
        group = {{{1.0, 2.0, 3.0}}, {{4.0, 5.0, 6.0}}};
    return data;
}

} // namespace

Operations ifswCalibrationOperations()
{
    using Adapter = SdkYqIfswCalibrationControl;
    return operations<Adapter, sdk::service::IYqIfswCalibrationControl, FakeYqIfswCalibrationControl>(
        std::vector<Row<Adapter>>{
            readsFrequencyPlan<Adapter>(),
            does<Adapter>("saveCalibrationData", {"saveCalibrationData()"},
                          [](Adapter& adapter) { adapter.saveCalibrationData(oneOfEach()); }),
        }
        + observing<Adapter>());
}

Operations factoryPowerCalibrationOperations()
{
    using Adapter = SdkYqFactoryPowerCalibrationControl;
    return operations<Adapter, sdk::service::IYqFactoryPowerCalibrationControl, FakeYqFactoryPowerCalibrationControl>(
        std::vector<Row<Adapter>>{
            readsFrequencyPlan<Adapter>(),
            does<Adapter>("saveCalibrationData", {"saveCalibrationData(1700000000, -2.5)"},
                          [](Adapter& adapter) {
                              adapter.saveCalibrationData(std::chrono::sys_seconds(std::chrono::seconds(1'700'000'000)),
                                                          -2.5, {{1e9, 2.0F, 3.0F, 4, 255, 6.0F, 7, 8.0F, 9.0F}});
                          }),
        }
        + observing<Adapter>());
}

Operations factoryCorrectionsOperations()
{
    using Adapter = SdkFactoryCorrectionControl;
    using Corrections = std::vector<int>;
    constexpr std::uint16_t mask = 0x8005;
    const auto supported = [](const Adapter& adapter) {
        Corrections corrections;
        for (const FactoryCorrection correction : adapter.supported())
            corrections.push_back(static_cast<int>(correction));
        return corrections;
    };
    const auto asks = [](const std::string& name, bool (Adapter::*query)(FactoryCorrection) const,
                         const std::string& sdkCall) {
        return readsBy<Adapter>(
                   name, [query](const Adapter& adapter) { return (adapter.*query)(FactoryCorrection::Correction10); },
                   false, SdkAnswers{mask}, true)
            .as(sdkCall);
    };
    return operations<Adapter, sdk::IFactoryCorrectionControl, FakeFactoryCorrectionControl>(
        std::vector<Row<Adapter>>{
            readsBy<Adapter>("supported", supported, Corrections{}, SdkAnswers{mask}, Corrections{0, 2, 9})
                .as("supportedCorrections()"),
            asks("isValid", &Adapter::isValid, "validCorrections()"),
            asks("isEnabled", &Adapter::isEnabled, "enabledCorrections()"),
            asks("isModifiable", &Adapter::isModifiable, "modifiableCorrections()"),
            does<Adapter>("setEnabled", {"validCorrections()", "modifiableCorrections()", "setEnabled(32768, true)"},
                          [](Adapter& adapter) { adapter.setEnabled(FactoryCorrection::Correction10, true); })
                .with("validCorrections", mask)
                .with("modifiableCorrections", mask)
                .inSteps(),
        }
        + observing<Adapter>());
}

Operations calibrationControllerOperations()
{
    using Adapter = SdkCalibrationControlHandle;
    using sdk::service::calibrations::ICalibrationController;
    auto lock = readsBy<Adapter>(
        "lock", [](const Adapter& adapter) { return static_cast<bool>(adapter.lock()); }, false, SdkAnswers{0}, true);
    lock.sdkCalls.clear();
    return operations<Adapter, ICalibrationController, FakeCalibrationController>({
        lock,
        does<Adapter>("onControlsAboutToBeReleased", {},
                      [](Adapter& adapter) { adapter.onControlsAboutToBeReleased(); }),
        does<Adapter>("onControlsAvailable", {}, [](Adapter& adapter) { adapter.onControlsAvailable(); }),
    });
}

} // namespace tov::testing

#include "attempt.h"
#include "operations/operations.h"
#include "operations/row.h"
#include "scenario.h"
#include "testing/fakeloleakagecontrol.h"

#include <new>
#include <string>
#include <utility>
#include <vector>

namespace tov::testing {

namespace {

using Call = std::string (Stage::*)();

// An SDK lets go of an observer without fail.
void refuseUnlessItLetsGo(const Stage& stage)
{
    if (stage.calls().back() != "removeObserver()")
        sdkIsCalled();
}

Scenario calling(const Operation& operation, Call call, const std::string& how)
{
    return {operation.name + how, [operation, call](Complaints& complaints) {
                const auto stage = operation.makeStage();
                stage->offer();
                if (call == &Stage::callOnMovedTo)
                    stage->call(); // what is moved from need not find a control that it has not found before
                stage->duringCall([&] { refuseUnlessItLetsGo(*stage); });
                std::string result;
                const auto again = [&] { result = (stage.get()->*call)(); };
                attempt(again);
                complaints.expect(result == operation.whenPresent, "the operation gives its result");
                again();
                complaints.expect(result == operation.whenPresent, "it gives its result again");
                stage->release();
                complaints.expect(stage->livingControls() == 0, "nobody holds the control");
            }};
}

using sdk::service::ILoLeakageControl;

/// Minds neither what fails nor what throws.
class Careless
{
public:
    explicit Careless(devices::ReacquiringControl<ILoLeakageControl> control)
        : m_control(std::move(control))
    {
    }

    bool leaks()
    {
        void* const first = ::operator new(1);
        void* const second = ::operator new(1);
        const bool enabled = isEnabled();
        ::operator delete(second);
        ::operator delete(first);
        return enabled;
    }
    bool staysBusy()
    {
        if (std::exchange(m_busy, true))
            return false;
        ::operator delete(::operator new(1));
        const bool enabled = isEnabled();
        m_busy = false;
        return enabled;
    }

private:
    bool isEnabled() const { return m_control.lock()->isEnabled(); }

    const devices::ReacquiringControl<ILoLeakageControl> m_control;
    bool m_busy = false;
};

} // namespace

std::vector<Scenario> operationScenarios()
{
    std::vector<Scenario> scenarios;
    for (const Operation& operation : allOperations()) {
        scenarios.push_back(calling(operation, &Stage::call, ""));
        scenarios.push_back(calling(operation, &Stage::callOnCopy, " of a copy"));
        scenarios.push_back(calling(operation, &Stage::callOnMovedTo, " of what was moved to"));
    }
    return scenarios;
}

std::vector<Scenario> brokenOperationScenarios()
{
    std::vector<Scenario> scenarios;
    for (const auto& [what, operation] : {std::pair("a leak when the second allocation fails", &Careless::leaks),
                                          std::pair("a state that stays when something throws", &Careless::staysBusy)})
        for (const Operation& row : operations<Careless, ILoLeakageControl, FakeLoLeakageControl>(
                 {readsBy<Careless>("isEnabled", operation, false, SdkAnswers{true}, true)}))
            scenarios.push_back({what, calling(row, &Stage::call, "").run});
    return scenarios;
}

} // namespace tov::testing

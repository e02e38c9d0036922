#include "conformance/bench/causes.h"

#include "conformance/bench/callbackoperations.h"

#include <algorithm>

namespace tov::conformance {

namespace {

void tellBy(Bench& bench, const CallbackOperation& operation)
{
    const auto control = bench.instrument()->findControl(operation.control.keys.sdk);
    if (!control)
        return;
    const Answers answers;
    operation.prepare(bench, control).make(answers.callback());
    answers.block(bench.settings().timeout);
}

} // namespace

std::function<void()> causeOf(Bench& bench, const devices::ControlName& control)
{
    if (bench.can(Bench::Ability::Notify)) {
        bench.notify(control);
        return [&bench, control] {
            try {
                bench.notify(control);
            } catch (const NotApplicable&) {
                return; // the controls are away now
            }
        };
    }
    const auto& all = callbackOperations();
    const auto telling = std::ranges::find_if(all, [&](const CallbackOperation& operation) {
        return operation.control.keys.sdk == control.keys.sdk && operation.tells;
    });
    if (telling == all.end())
        throw NotApplicable("the provider has no test hook to cause notifications", named(control));
    beAllowed(bench, *telling);
    return [&bench, telling] { tellBy(bench, *telling); };
}

} // namespace tov::conformance

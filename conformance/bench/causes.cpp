#include "conformance/bench/causes.h"

#include "conformance/bench/callbackoperations.h"

#include <algorithm>

namespace tov::conformance {

namespace {

void tellBy(Bench& bench, const CallbackOperation& operation)
{
    const Answers answers;
    operation.prepare(bench, bench.held(operation.control)).make(answers.callback());
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
    const auto telling = std::ranges::find_if(
        all, [&](const CallbackOperation& operation) { return operation.control == control && operation.tells; });
    if (telling == all.end())
        throw NotApplicable("the provider has no test hook to cause notifications", named(control));
    beAllowed(bench, *telling);
    return [&bench, telling] {
        try {
            tellBy(bench, *telling);
        } catch (const std::exception&) {
            return; // the control is away now, or its operation throws
        }
    };
}

} // namespace tov::conformance

#pragma once

#include "disturbance.h"

#include <new>

namespace tov::testing {

/// Does `action` while it may be disturbed; when it was and what went wrong came out as an exception, does `again`.
template <typename Action, typename Again>
void attempt(Action action, Again again)
{
    try {
        const Disturbed disturbed;
        action();
        return;
    } catch (const std::bad_alloc&) {
    } catch (const Refusal&) {
    }
    again();
}

template <typename Action>
void attempt(Action action)
{
    attempt(action, action);
}

} // namespace tov::testing

#pragma once

#include "devices/reacquiringcontrol.h"

#include <memory>

namespace tov::benchmarks {

/// What an adapter holds of a control that is always there.
template <typename SdkIface, typename Control>
devices::ReacquiringControl<SdkIface> handleOf(const std::shared_ptr<Control>& control)
{
    return devices::ReacquiringControl<SdkIface>(
        [control] { return sdk::ControlHandle<SdkIface>(std::shared_ptr<SdkIface>(control)); });
}

} // namespace tov::benchmarks

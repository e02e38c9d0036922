#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/controlhandle.h"

#include <any>
#include <functional>
#include <memory>

namespace tov::devices {

/// Makes the function that a registry entry uses to create a control for an owner.
///
/// The function looks the SDK control up on its owner by `key`. If the owner does not have it, the
/// result is empty. Otherwise the result holds a `std::shared_ptr<Exposed>` of a new `Impl`, which is
/// constructed from a `ReacquiringControl<SdkIface>`. The owner must outlive what is created from it
/// and must not be null. What the lookup or the constructor of `Impl` throws passes through.
///
/// Thread: the function may run on any thread from which the owner may be called.
template <typename Owner, typename SdkIface, typename Exposed, typename Impl, typename KeyType>
auto makeCreateFunction(KeyType key)
{
    return [key](Owner* owner) -> std::any {
        using Handle = sdk::ControlHandle<SdkIface>;

        // Gives up the strong reference before it returns: nothing here keeps the control alive.
        const auto find = [owner, key] { return Handle(std::static_pointer_cast<SdkIface>(owner->findControl(key))); };
        if (!find().lock())
            return {};

        const std::function<Handle()> reacquire = find;
        const ReacquiringControl<SdkIface> control(reacquire);
        return std::shared_ptr<Exposed>(std::make_shared<Impl>(control));
    };
}

} // namespace tov::devices

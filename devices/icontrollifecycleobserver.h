#pragma once

#include "devices/cxx23.h"

namespace tov::devices {

/// Told by the application when an instrument's controls go and come.
///
/// The application owns the adapters and calls these operations on those that implement them; nothing
/// registers itself.
///
/// Thread: *owner's thread*, unless the adapter says *any thread*.
class IControlLifecycleObserver
{
public:
    virtual ~IControlLifecycleObserver() = default;

    /// The instrument is about to release its controls; they still live during this call.
    virtual void onControlsAboutToBeReleased() = 0;

    /// The instrument offers its controls again; they can be obtained from now on. To be called once for each release:
    /// some adapters register with the SDK again at each call.
    virtual void onControlsAvailable() = 0;
};

} // namespace tov::devices

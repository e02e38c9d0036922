#pragma once

#include "provider/itesthooks.h"
#include "provider/result.h"
#include "sdk/ivna.h"

#include <memory>

namespace tov::provider {

/// Hears of the controls of an open instrument.
///
/// Thread: the provider calls it on any thread, one call at a time, also inside what the host calls; there, what an
/// application throws when it is told passes through.
class IControlsListener
{
public:
    virtual ~IControlsListener() = default;

    /// The controls are about to go. They stay until nobody holds `hold` any more: the host lets go of it when
    /// everybody who uses them has heard of it. This returns at once; what waits in a control is answered meanwhile.
    ///
    /// Controls that are gone already, because nobody could wait, may be told of so too.
    virtual void onControlsAboutToBeReleased(std::shared_ptr<void> hold) = 0;

    /// The instrument offers its controls again, each as a new object.
    virtual void onControlsOffered() = 0;
};

/// An open instrument; the end of this object closes it.
///
/// Thread: *owner's thread*, which may be another than the one that opened it.
class IConnection
{
public:
    IConnection() = default;
    IConnection(const IConnection&) = delete;
    IConnection& operator=(const IConnection&) = delete;

    /// Closes the instrument. No holds are waited for.
    virtual ~IConnection() = default;

    /// The instrument: always the same, never null. It lives as long as anybody shares it; once the connection is
    /// closed it has no controls.
    virtual std::shared_ptr<sdk::IVna> instrument() = 0;

    /// Tells `listener`, which is not owned, from now on, and nobody else; nobody if it is null. When this returns, the
    /// one before is not being told any more.
    virtual void setListener(IControlsListener* listener) = 0;

    /// Makes what was changed lasting, for a provider that keeps an instrument in a file.
    virtual Result<void> keep() { return {}; }

    /// What tests may do to the instrument; null when there is nothing. Lives as long as the connection.
    virtual ITestHooks* testHooks() { return nullptr; }
};

} // namespace tov::provider

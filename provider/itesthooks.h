#pragma once

#include "provider/result.h"
#include "sdk/key.h"

#include <chrono>
#include <vector>

namespace tov::provider {

/// What a person with both hands at the instrument could do to it, for tests and demonstrations. What a provider does
/// not override it cannot do.
///
/// Thread: one at a time, on any thread. None of these waits for a thread of the host's, which may be the one that
/// calls.
class ITestHooks
{
public:
    /// What can be asked for.
    enum class Ability {
        ReleaseAndOffer, ///< `releaseControls()` and `offerControls()`
        Notify,          ///< `notify()`
        Answer,          ///< `setAnswer()`
        PassTime,        ///< `passTime()`
        WaitUntilQuiet,  ///< `waitUntilQuiet()`
    };

    /// How an operation that is answered by a callback may answer.
    enum class Answer {
        AsUsual,              ///< as if it had never been chosen
        WithError,            ///< with an error code whose number is not 0
        Late,                 ///< as usual, after a second, from a thread of the provider's
        Throwing,             ///< by an exception instead of returning; the callback is never called
        ReleasingTheControls, ///< as usual, while the controls go
    };

    ITestHooks() = default;
    ITestHooks(const ITestHooks&) = delete;
    ITestHooks& operator=(const ITestHooks&) = delete;
    virtual ~ITestHooks() = default;

    /// What this provider can do.
    virtual std::vector<Ability> abilities() const = 0;

    /// Has the controls go, as when the connection to the instrument is lost: the host is told first. Nothing when they
    /// are gone.
    virtual Result<void> releaseControls() { return cannot(); }

    /// Has the controls come back, and tells the host. Nothing when they are there.
    virtual Result<void> offerControls() { return cannot(); }

    /// Makes the control of this key notify its observers, in each way that it has, of something that leaves the
    /// instrument as it was: on threads of its own, as it does by itself. Fails for a control that notifies nobody.
    virtual Result<void> notify(sdk::Key /*control*/) { return cannot(); }

    /// Has the operation of this name (that of the SDK's function) of a control answer so from now on. One that is not
    /// answered by a callback, such as `addObserver`, can only throw.
    virtual Result<void> setAnswer(sdk::Key /*control*/, const QString& /*operation*/, Answer /*answer*/)
    {
        return cannot();
    }

    /// Lets time pass for an instrument whose clock is not that on the wall.
    virtual Result<void> passTime(std::chrono::milliseconds /*time*/) { return cannot(); }

    /// Returns when what was asked for is answered and what has happened is told. Not in a notification.
    virtual Result<void> waitUntilQuiet() { return cannot(); }

private:
    static Result<void> cannot() { return std::unexpected(QStringLiteral("this provider cannot do that")); }
};

} // namespace tov::provider

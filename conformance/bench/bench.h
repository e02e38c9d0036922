#pragma once

#include "conformance/bench/tally.h"
#include "conformance/bench/verdicts.h"
#include "devices/controls.h"
#include "provider/iconnection.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace tov::conformance {

/// What checks may do, and how long they wait.
struct Settings
{
    std::chrono::milliseconds timeout = std::chrono::seconds(10); ///< for what must come at all
    std::uint64_t seed = 1;                                       ///< determines what checks choose by chance
    std::optional<devices::ControlName> only;                     ///< the control to look at, if not all
    bool mayWrite = false;                                        ///< whether what is there is written again
    bool mayErase = false;                                        ///< whether the memory is erased and restored
    std::string after; ///< the operation that was looked at last, by another process; empty if there is none
};

/// Hears how a check gets on.
class IProgress
{
public:
    IProgress() = default;
    IProgress(const IProgress&) = delete;
    IProgress& operator=(const IProgress&) = delete;
    virtual ~IProgress() = default;

    /// What comes next, so that it is known if that never returns.
    virtual void begin(const std::string& what) = 0;

    /// Ends the program well, because this operation may end it; another process goes on after it.
    virtual void endAfter(const std::string& operation) = 0;
};

/// The open instrument with the checks' hands at it. Its controls go as soon as their going is told.
///
/// Thread: that of its constructor, but for what says otherwise.
class Bench final : private provider::IControlsListener
{
public:
    using Ability = provider::ITestHooks::Ability;
    using Answer = provider::ITestHooks::Answer;

    /// `progress` lives as long as the program if it is to hear of the end of it.
    Bench(std::unique_ptr<provider::IConnection> connection, const Settings& settings, IProgress& progress);
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    /// Closes the instrument if it is open.
    ~Bench() override;

    const Settings& settings() const noexcept { return m_settings; }
    std::mt19937_64& random() noexcept { return m_random; }
    const std::shared_ptr<sdk::IVna>& instrument() const noexcept { return m_instrument; }

    /// Says what comes next. On other threads it says nothing: they do not show that the check goes on.
    void begin(const std::string& what) const;

    /// From now on the operation is passed if the SDK ends the program by `std::terminate()`.
    void passIfTerminated(const std::string& operation) const;

    /// The controls to look at that the instrument offers now, in an order that the seed determines.
    std::vector<devices::ControlName> offered();

    /// Runs this thread's event loop until `happened`; false when it did not in `patience`, which is the time-out if it
    /// is not given.
    bool waitUntil(const std::function<bool()>& happened,
                   std::optional<std::chrono::milliseconds> patience = std::nullopt) const;

    /// How long an answer is waited for that was chosen to be late, which is a second.
    std::chrono::milliseconds patienceForLateAnswers() const
    {
        return 2 * m_settings.timeout + std::chrono::seconds(1);
    }

    /// Waits until what is under way is answered and told, as far as that can be known.
    void settle();

    /// The control of this kind as the instrument offers it. Throws `NotApplicable` when it does not.
    std::shared_ptr<void> held(const devices::ControlName& control) const;

    bool can(Ability ability) const;

    /// Throws `NotApplicable` when the test hooks are not able to do this.
    void needs(Ability ability) const;

    /// Has the controls go and come; these may be called on any thread. Throw `NotApplicable` when it cannot be done.
    void releaseControls();
    void offerControls();

    /// Has an operation answer so. Throws `NotApplicable` when it cannot be had.
    void setAnswer(const devices::ControlName& control, const std::string& operation, Answer answer);

    /// Has the control tell its observers of something; may be called on any thread. Throws `NotApplicable` when it
    /// cannot be done.
    void notify(const devices::ControlName& control);

    /// Closes the instrument.
    void close();

private:
    void onControlsAboutToBeReleased(std::shared_ptr<void> /*hold*/) override {}
    void onControlsOffered() override {}

    const std::thread::id m_owner = std::this_thread::get_id();
    const Settings m_settings;
    IProgress& m_progress;
    std::mt19937_64 m_random;
    std::unique_ptr<provider::IConnection> m_connection;
    const std::shared_ptr<sdk::IVna> m_instrument;
    provider::ITestHooks* const m_hooks;
    const std::vector<Ability> m_abilities;
    std::mutex m_hooksMutex; // the hooks are used by one thread at a time
};

/// Has the controls gone as long as it lives. Throws `NotApplicable` when that cannot be done.
class Released
{
public:
    /// Returns when no control is found any more, or when they have had their time.
    explicit Released(Bench& bench);
    Released(const Released&) = delete;
    Released& operator=(const Released&) = delete;
    ~Released();

private:
    Bench& m_bench;
};

/// A control and one of its operations, in words.
inline std::string named(const devices::ControlName& control, const std::string& operation = {})
{
    return std::string(control.name) + (operation.empty() ? "" : " " + operation + "()");
}

} // namespace tov::conformance

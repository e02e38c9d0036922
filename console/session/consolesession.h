#pragma once

#include "console/terminal/following.h"
#include "console/terminal/output.h"
#include "host/instrumentsession.h"
#include "host/providers.h"
#include "tools/controls.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tov::console {

/// How the user wants a command to answer.
struct AnswerOptions
{
    bool json = false;          ///< in JSON instead of text
    bool yes = false;           ///< goes on with what cannot be undone, without asking
    std::string columns;        ///< headings of the columns of tables that are wanted, divided by commas; empty: all
    std::string filter;         ///< what rows of tables contain; empty: all rows
    std::string color = "auto"; ///< whether tables are coloured: auto, always, never
};

/// What the user asked for besides the command.
struct Options : AnswerOptions
{
    std::string provider;             ///< by what the instrument is opened; empty: as the environment says
    std::vector<std::string> missing; ///< names of controls that the simulated instrument lacks
    std::string stateFile;            ///< where it is kept; empty: nowhere
    std::string wait;                 ///< how long for others who use it, in seconds; empty: as the provider likes
};

/// What a command works with: an instrument and a place for its answer.
class ConsoleSession
{
public:
    /// Opens nothing yet. Throws `BadUse` for an unknown control, or answer options that are none.
    explicit ConsoleSession(const Options& options);

    Output& output() noexcept { return m_output; }

    /// Where lines are printed as something happens.
    Following& following() noexcept { return m_following; }

    const AnswerOptions& answerOptions() const noexcept { return m_options; }

    /// Answers as `options` say from now on. Throws `BadUse`.
    void setAnswerOptions(const AnswerOptions& options);

    /// The session on the instrument, which the first call opens. Throws `BadUse` when there is no such provider or
    /// option, and `Failure` when the instrument cannot be opened.
    host::InstrumentSession& session();

    /// The adapter of this kind. Throws `Failure` when the instrument lacks it.
    template <typename Exposed>
    std::shared_ptr<Exposed> require(const host::Control<Exposed>& kind)
    {
        return requireFrom(session(), kind);
    }

    /// By what the instrument is opened. Opens nothing, and throws `BadUse` as `session()` does.
    const host::ProviderChoice& choice();

    /// The instrument as its provider describes it.
    const provider::InstrumentDescription& instrument();

    /// Whether it is kept in a file.
    bool keepsState();

    /// Asks the user, unless that was forbidden, whether to go on with what cannot be undone, such as "erase the
    /// memory". Throws `Failure` if not, and `BadUse` where nobody can be asked.
    void confirm(const std::string& act) const;

    /// Keeps what the command changed, where the provider does that. Throws `Failure`.
    void keep();

    /// Has the instrument release its controls, offer them again, or the control notify, and waits until it is quiet.
    /// These throw `Failure` where the provider cannot do that.
    void releaseControls();
    void offerControls();
    void notify(const host::ControlName& control);

    /// Lets time pass (at once, where that can be asked for), and waits until the instrument is quiet.
    void passTime(std::chrono::milliseconds time);

    /// Lets the time that has really passed pass for an instrument with a clock of its own, which nobody else does.
    void keepUp(std::chrono::milliseconds time);

    /// The present time of the instrument, as 2026-01-31T12:00:00.000+01:00: where time passed at once, it is ahead.
    /// Thread: *any thread*.
    std::string timestamp() const;

    /// Whether it does what only tests can ask for.
    bool can(provider::ITestHooks::Ability ability);

    /// Has the adapters hear of what the provider has told of the controls.
    void passOnNotices();

    /// Returns when everything has been told, where that can be known; at once when nothing was opened.
    void waitUntilQuiet();

private:
    provider::ITestHooks& hooks();

    Options m_options;
    Output m_output;
    Following m_following;
    std::optional<host::ProviderChoice> m_choice;
    provider::InstrumentDescription m_instrument;       // once it is open
    std::unique_ptr<host::InstrumentSession> m_session; // null until then
    std::atomic<std::chrono::milliseconds> m_ahead;     // how far the instrument's clock is, of that on the wall
};

} // namespace tov::console

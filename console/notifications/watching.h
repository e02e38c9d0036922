#pragma once

#include "console/terminal/interruption.h"
#include "host/controls.h"
#include "tools/files/localfile.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace tov::console {

class Command;
class ConsoleSession;

/// What the help says of `--exercise COUNT`.
inline constexpr auto exerciseHelp =
    "Make the instrument notify COUNT times, by operations that change nothing, and end";

/// How long a command watches.
struct WatchArguments
{
    int exercise = 0;                    ///< how often the instrument is made to notify; 0: not
    std::optional<std::string> duration; ///< how many seconds; without both, until the user stops
    LocalTarget csv;                     ///< the file that gets everything too; without a path: none
};

/// Adds the options that fill `arguments`.
void addWatchOptions(Command& command, WatchArguments& arguments, const char* helpOfExercise = exerciseHelp);

/// A time above 0, from the seconds that a user gives for the option `name`. Throws `BadUse`.
std::chrono::milliseconds requireSeconds(const std::string& name, const std::string& text);

/// Throws `Failure`, which says when, if the instrument has lost the control, so that nothing is heard of it.
void requireStillThere(ConsoleSession& console, const host::ControlName& control);

/// Watching, which the user stops (Ctrl-C). It begins with saying so on standard error.
class Watch
{
public:
    /// Throws `BadUse` when the arguments contradict one another.
    Watch(ConsoleSession& console, const WatchArguments& arguments);

    /// Goes on until the user stops it or its time is over, calling `everyPeriod` each time when that has passed; or
    /// calls `exercise` as often as the arguments say. Where the instrument has a clock of its own, a time that is
    /// given passes at once. Throws `OutputLost` as soon as nobody reads what is printed.
    void run(const std::function<void()>& exercise, const std::function<void()>& everyPeriod,
             std::chrono::milliseconds period = std::chrono::seconds(1)) const;

private:
    bool goesOn() const;
    void passAtOnce(std::chrono::milliseconds duration, const std::function<void()>& everyPeriod,
                    std::chrono::milliseconds period) const;
    void wait(const std::function<void()>& everyPeriod, std::chrono::milliseconds period) const;

    ConsoleSession& m_console;
    const int m_exercise;
    const std::optional<std::chrono::milliseconds> m_duration;
    const Interruption m_interruption{Interruption::Signals::CtrlCAndTermination};
};

} // namespace tov::console

#pragma once

#include <functional>

namespace tov::console {

class ConsoleSession;

/// What the help says of `--exercise COUNT`.
inline constexpr auto exerciseHelp =
    "Make the instrument notify COUNT times, by operations that change nothing, and end";

/// How long a command watches.
struct WatchArguments
{
    int exercise = 0; ///< how often the instrument is made to notify; 0: until the user stops
};

/// Watching, which the user stops (Ctrl-C). It begins with saying so on standard error.
class Watch
{
public:
    Watch(ConsoleSession& console, const WatchArguments& arguments);
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    /// Gives the handling of signals back.
    ~Watch();

    /// Goes on until the user stops it, meanwhile calling `everySecond` if there is one, or calls `exercise` as often
    /// as the arguments say.
    void run(const std::function<void()>& exercise, const std::function<void()>& everySecond = nullptr) const;

private:
    using Handler = void (*)(int);

    ConsoleSession& m_console;
    const int m_exercise;
    const Handler m_interrupt;
    const Handler m_terminate;
};

} // namespace tov::console

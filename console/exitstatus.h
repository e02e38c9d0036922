#pragma once

#include <stdexcept>

namespace tov::console {

/// How `service-console` ends. Part of its interface: scripts rely on the numbers.
enum class ExitStatus : int {
    Success = 0,
    /// The instrument lacks the control, or did not do what was asked.
    Failure = 1,
    /// An unknown command or control, or a malformed value; nothing was changed.
    BadUse = 2,
    /// The program itself failed, for instance to write its answer.
    InternalError = 3,
};

/// Ends a command with one line for the person who called it.
class CommandError : public std::runtime_error
{
public:
    CommandError(ExitStatus status, const std::string& line)
        : std::runtime_error(line)
        , m_status(status)
    {
    }

    ExitStatus status() const noexcept { return m_status; }

private:
    ExitStatus m_status;
};

} // namespace tov::console

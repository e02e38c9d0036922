#pragma once

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

} // namespace tov::console

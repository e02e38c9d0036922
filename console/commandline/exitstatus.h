#pragma once

#include <array>
#include <string_view>

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

struct ExitStatusMeaning
{
    ExitStatus status;
    std::string_view meaning;
};

/// What the help and the manual pages say of them.
inline constexpr std::array exitStatusMeanings{
    ExitStatusMeaning{ExitStatus::Success, "done"},
    ExitStatusMeaning{ExitStatus::Failure, "the instrument cannot be opened, lacks the control or did not do what was "
                                           "asked, or a file cannot be used"},
    ExitStatusMeaning{ExitStatus::BadUse, "unknown command, control, provider or option, or a value that cannot be "
                                          "right; nothing was changed"},
    ExitStatusMeaning{ExitStatus::InternalError, "the program itself failed"},
};

} // namespace tov::console

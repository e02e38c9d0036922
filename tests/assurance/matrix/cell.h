#pragma once

#include "operations/operation.h"

#include <array>
#include <string>
#include <string_view>

namespace tov::testing {

/// What the instrument does about the control that an operation needs.
enum class State {
    Answers,
    AnswersNumber0,
    AnswersGenericError,
    AnswersSystemError,
    AnswersOwnError,
    Throws,
    Unusable,
    NeverOffered,
    ReleasedBefore,
    ReleasedDuring,
    ReleasedAfter,
    OfferedAgainDuring,
};

/// How the operation is answered.
enum class Way {
    Inline,
    Later,    ///< by another thread, once the caller sleeps
    ByThread, ///< before the SDK's operation returns
    Twice,
    Never,
};

inline constexpr std::array states = {State::Answers,
                                      State::AnswersNumber0,
                                      State::AnswersGenericError,
                                      State::AnswersSystemError,
                                      State::AnswersOwnError,
                                      State::Throws,
                                      State::Unusable,
                                      State::NeverOffered,
                                      State::ReleasedBefore,
                                      State::ReleasedDuring,
                                      State::ReleasedAfter,
                                      State::OfferedAgainDuring};
inline constexpr std::array ways = {Way::Inline, Way::Later, Way::ByThread, Way::Twice, Way::Never};

std::string_view name(State state);
std::string_view name(Way way);

/// Why a cell makes no sense; empty when it does.
std::string_view notApplicable(const Operation& operation, State state, Way way);

/// Tries a cell that makes sense. What is wrong, or nothing.
std::string tryCell(const Operation& operation, State state, Way way);

} // namespace tov::testing

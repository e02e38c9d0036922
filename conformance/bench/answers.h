#pragma once

#include "conformance/bench/bench.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace tov::conformance {

/// Hears of an answer, without its value.
using Answered = std::function<void(std::error_code)>;

/// Counts the answers of one call. Copies count together.
///
/// Thread: *any thread*.
class Answers
{
public:
    /// What the call is given.
    Answered callback() const;

    int count() const;

    /// That of the first answer. There must be one.
    std::error_code error() const;

    /// Blocks this thread until there is an answer; false when none came in `patience`.
    bool block(std::chrono::milliseconds patience) const;

private:
    struct State
    {
        std::mutex mutex; // guards all below
        std::condition_variable answered;
        std::vector<std::error_code> errors;
    };

    std::shared_ptr<State> m_state = std::make_shared<State>();
};

/// Those of several calls, each with what was called.
using NamedAnswers = std::vector<std::pair<std::string, Answers>>;

/// Makes a call. One that throws answers nothing, as it may, which is a `NotApplicable`.
void make(const std::string& name, const std::function<void(Answered)>& call, const Answered& answered);

/// What an operation answers, which is waited for so many times the time-out; throws `Finding` when no answer comes.
std::error_code answerOf(const Bench& bench, const std::string& name, const std::function<void(Answered)>& call,
                         int times = 1);

} // namespace tov::conformance

#pragma once

#include "conformance/bench/bench.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <system_error>
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

/// A call that can be made again and again.
struct Call
{
    std::function<void(Answered)> make;
    std::function<void()> restore; ///< afterwards everything is as it was; null when nothing changes
};

/// An operation that is answered by a callback.
struct CallbackOperation
{
    /// What it does to the instrument.
    enum class Effect { Reads, Writes, Erases };

    devices::ControlName control;
    std::string name; ///< that of the SDK's function
    Effect effect = Effect::Reads;
    /// Makes a call of it, of a control that is there. Throws `NotApplicable` when there is nothing to call it with.
    std::function<Call(Bench&, const std::shared_ptr<void>&)> prepare;
    bool tells = false; ///< whether observers hear of it
};

/// All of them but one: what it writes into the RAM of a potentiometer cannot be read and restored.
const std::vector<CallbackOperation>& callbackOperations();

/// Makes a call. One that throws answers nothing, as it may, which is a `NotApplicable`.
void make(const std::string& name, const std::function<void(Answered)>& call, const Answered& answered);

/// What an operation answers, which is waited for so many times the time-out; throws `Finding` when no answer comes.
std::error_code answerOf(const Bench& bench, const std::string& name, const std::function<void(Answered)>& call,
                         int times = 1);

/// Throws `NotAllowed` if the user has not allowed what the operation does.
void beAllowed(const Bench& bench, const CallbackOperation& operation);

/// Which operations a check is about.
using Which = std::function<bool(const CallbackOperation&)>;
bool everyOperation(const CallbackOperation& operation);
bool onlyReads(const CallbackOperation& operation);
bool ofTheFileMemory(const CallbackOperation& operation);

/// Does `work` with each of these operations that may be looked at, and says with which.
Seen forEachOperation(Bench& bench, const Which& which,
                      const std::function<void(const CallbackOperation&, const std::string& name, const Call&)>& work);

/// Has an operation answer in a way of its own as long as this lives. Throws `NotApplicable` when it cannot be had.
class Answering
{
public:
    Answering(Bench& bench, const CallbackOperation& operation, Bench::Answer answer);
    Answering(const Answering&) = delete;
    Answering& operator=(const Answering&) = delete;
    ~Answering();

private:
    Bench& m_bench;
    const CallbackOperation& m_operation;
};

/// The same; null when it cannot be had.
std::unique_ptr<Answering> answeringIfItCan(Bench& bench, const CallbackOperation& operation, Bench::Answer answer);

} // namespace tov::conformance

#pragma once

#include "testing/exactly.h"
#include "testing/undisturbed.h"

#include <any>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace tov::testing {

/// The calls that fakes record, as "operation(argument, ...)". It may outlive them, so that a test sees what
/// happened to a control that is gone.
class Journal
{
public:
    /// The calls so far.
    std::vector<std::string> calls() const
    {
        const std::lock_guard guard(m_mutex);
        return m_calls;
    }

    /// Adds a call.
    void record(std::string call)
    {
        const std::lock_guard guard(m_mutex);
        m_calls.push_back(std::move(call));
    }

private:
    mutable std::mutex m_mutex; // guards all below
    std::vector<std::string> m_calls;
};

/// Base of the SDK fakes: records every call with its arguments and answers what the test told it to.
class RecordingControl
{
public:
    RecordingControl() = default;
    RecordingControl(const RecordingControl&) = delete;
    RecordingControl& operator=(const RecordingControl&) = delete;

    /// The calls so far.
    std::vector<std::string> calls() const { return m_journal->calls(); }

    /// Records into `journal` from now on.
    void recordInto(std::shared_ptr<Journal> journal) { m_journal = std::move(journal); }

    /// Makes `operation` answer `value`, which has exactly the operation's result type. Without this it
    /// answers a value-initialized one.
    void answer(const std::string& operation, std::any value)
    {
        const std::lock_guard guard(m_mutex);
        m_answers[operation] = std::move(value);
    }

    /// Runs inside every call, after it was recorded; may throw.
    std::function<void()> duringCall;

protected:
    ~RecordingControl() = default;

    /// Records the call and gives the answer that the test gave, or a value-initialized one.
    template <typename Result = void, typename... Arguments>
    Result called(const std::string& operation, const Arguments&... arguments)
    {
        const Undisturbed undisturbed;
        std::string call = operation + "(";
        ((call += (call.back() == '(' ? "" : ", ") + exactly(arguments)), ...);
        m_journal->record(call + ")");
        std::any answer;
        {
            const std::lock_guard guard(m_mutex);
            if (const auto found = m_answers.find(operation); found != m_answers.end())
                answer = found->second;
        }
        if (duringCall)
            duringCall();
        if constexpr (!std::is_void_v<Result>)
            return answer.has_value() ? std::any_cast<Result>(answer) : Result{};
    }

private:
    std::shared_ptr<Journal> m_journal = std::make_shared<Journal>();
    std::mutex m_mutex; // guards all below
    std::map<std::string, std::any> m_answers;
};

} // namespace tov::testing

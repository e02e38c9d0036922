#pragma once

#include <gtest/gtest.h>

#include <any>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace tov::testing {

/// Base of the SDK fakes: records every call with its arguments and answers what the test told it to.
class RecordingControl
{
public:
    RecordingControl() = default;
    RecordingControl(const RecordingControl&) = delete;
    RecordingControl& operator=(const RecordingControl&) = delete;

    /// The calls so far, as "operation(argument, ...)".
    std::vector<std::string> calls() const
    {
        const std::lock_guard guard(m_mutex);
        return m_calls;
    }

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

    template <typename Result = void, typename... Arguments>
    Result called(const std::string& operation, const Arguments&... arguments)
    {
        std::string call = operation + "(";
        ((call += (call.back() == '(' ? "" : ", ") + ::testing::PrintToString(arguments)), ...);
        std::any answer;
        {
            const std::lock_guard guard(m_mutex);
            m_calls.push_back(call + ")");
            if (const auto found = m_answers.find(operation); found != m_answers.end())
                answer = found->second;
        }
        if (duringCall)
            duringCall();
        if constexpr (!std::is_void_v<Result>)
            return answer.has_value() ? std::any_cast<Result>(answer) : Result{};
    }

private:
    mutable std::mutex m_mutex; // guards all below
    std::vector<std::string> m_calls;
    std::map<std::string, std::any> m_answers;
};

} // namespace tov::testing

#pragma once

#include "testing/recordingcontrol.h"

#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace tov::testing {

/// Base of the SDK fakes whose operations answer by a callback: records every call like its base and then
/// answers as the test told it to.
class AnsweringControl : public RecordingControl
{
public:
    /// When and where an operation answers.
    enum class When {
        AtOnce,        ///< on the caller's thread, before the operation returns
        ByThread,      ///< on another thread, before the operation returns
        Later,         ///< on another thread, before or after the operation returns
        TwiceByThread, ///< on another thread, twice, before the operation returns
        Never,         ///< the callback is destroyed
    };

    /// When operations answer.
    When when = When::AtOnce;

    /// The error code that comes with every answer.
    std::error_code error;

    /// Runs before a later answer, on the answering thread.
    std::function<void()> beforeAnswer;

    /// What a second answer threw in the answering thread. May be kept longer than the control.
    std::shared_ptr<std::error_code> secondAnswer = std::make_shared<std::error_code>();

protected:
    ~AnsweringControl() = default;

    /// Records the call and answers with the value that the test gave, or a value-initialized one.
    template <typename Value, typename... Arguments>
    void answers(const std::string& operation, std::function<void(Value, std::error_code)> callback,
                 const Arguments&... arguments)
    {
        deliver([callback = std::move(callback), value = called<Value>(operation, arguments...), code = error] {
            callback(value, code);
        });
    }

    /// The same for an operation without a value.
    template <typename... Arguments>
    void answers(const std::string& operation, std::function<void(std::error_code)> callback,
                 const Arguments&... arguments)
    {
        called(operation, arguments...);
        deliver([callback = std::move(callback), code = error] { callback(code); });
    }

private:
    void deliver(const std::function<void()>& answer)
    {
        switch (when) {
        case When::AtOnce:
            return answer();
        case When::Later: {
            const std::lock_guard guard(m_mutex);
            m_answering.emplace_back([this, answer] {
                if (beforeAnswer)
                    beforeAnswer();
                answer();
            });
            return;
        }
        case When::ByThread:
            std::jthread(answer).join();
            return;
        case When::TwiceByThread:
            std::jthread([&] {
                answer();
                try {
                    answer();
                } catch (const std::future_error& thrown) {
                    *secondAnswer = thrown.code();
                }
            }).join();
            return;
        case When::Never:
            return;
        }
    }

    std::mutex m_mutex; // guards all below
    std::vector<std::jthread> m_answering;
};

} // namespace tov::testing

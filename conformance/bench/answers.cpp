#include "conformance/bench/answers.h"

#include <exception>

namespace tov::conformance {

Answered Answers::callback() const
{
    return [state = m_state](std::error_code error) {
        const std::lock_guard guard(state->mutex);
        state->errors.push_back(error);
        state->answered.notify_all();
    };
}

int Answers::count() const
{
    const std::lock_guard guard(m_state->mutex);
    return static_cast<int>(m_state->errors.size());
}

std::error_code Answers::error() const
{
    const std::lock_guard guard(m_state->mutex);
    return m_state->errors.front();
}

bool Answers::block(std::chrono::milliseconds patience) const
{
    std::unique_lock lock(m_state->mutex);
    return m_state->answered.wait_for(lock, patience, [this] { return !m_state->errors.empty(); });
}

void make(const std::string& name, const std::function<void(Answered)>& call, const Answered& answered)
try {
    call(answered);
} catch (const std::exception& error) {
    throw NotApplicable(std::string("throws: ") + error.what(), name);
}

std::error_code answerOf(const Bench& bench, const std::string& name, const std::function<void(Answered)>& call,
                         int times)
{
    const Answers answers;
    bench.begin(name);
    make(name, call, answers.callback());
    for (int time = 0; time < times; ++time) {
        if (bench.waitUntil([&] { return answers.count() > 0; }))
            return answers.error();
        bench.begin(name + ", which is still waited for");
    }
    throw Finding(name + " is not answered in time");
}

} // namespace tov::conformance

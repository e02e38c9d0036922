#include "cell.h"

#include "homemadecategory.h"
#include "neveranswered.h"
#include "sleepingthread.h"

#include <array>
#include <exception>
#include <future>
#include <memory>
#include <sstream>
#include <thread>
#include <utility>
#include <vector>

#include <unistd.h>

namespace tov::testing {

namespace {

using When = AnsweringControl::When;

constexpr std::string_view thrown = "thrown by the instrument";

struct Refusal
{
};

std::error_code errorOf(State state)
{
    switch (state) {
    case State::AnswersNumber0:
        return {0, homeMade()};
    case State::AnswersGenericError:
        return std::make_error_code(std::errc::io_error);
    case State::AnswersSystemError:
        return {ENOENT, std::system_category()};
    case State::AnswersOwnError:
        return {-1, homeMade()};
    default:
        return {};
    }
}

bool isAnswerOfAnError(State state)
{
    return state == State::AnswersNumber0 || errorOf(state);
}

bool isPresent(State state)
{
    return state != State::Unusable && state != State::NeverOffered && state != State::ReleasedBefore;
}

bool isThereAfterTheCall(State state)
{
    return isPresent(state) && state != State::ReleasedDuring && state != State::ReleasedAfter;
}

bool isDuring(State state)
{
    return state == State::Throws || state == State::ReleasedDuring || state == State::OfferedAgainDuring;
}

When whenOf(Way way)
{
    switch (way) {
    case Way::Later:
        return When::Later;
    case Way::ByThread:
        return When::ByThread;
    case Way::Twice:
        return When::TwiceByThread;
    case Way::Never:
        return When::Never;
    case Way::Inline:
        break;
    }
    return When::AtOnce;
}

std::string shown(const std::vector<std::string>& calls)
{
    std::string text;
    for (const std::string& call : calls)
        text += (text.empty() ? "" : ", ") + call;
    return '[' + text + ']';
}

/// One try of one cell.
class Trial
{
public:
    Trial(const Operation& operation, State state, Way way)
        : m_operation(operation)
        , m_state(state)
        , m_way(way)
    {
        setStage();
    }

    std::string run()
    {
        m_callsBefore = m_stage->calls().size();
        expect("the result", result(), expectedResult());
        expect("the calls of the SDK", shown(callsSinceBefore()), shown(expectedCalls()));
        if (m_way == Way::Twice)
            expect("a second answer", m_secondAnswer->message(),
                   std::make_error_code(std::future_errc::promise_already_satisfied).message());
        if (m_state == State::OfferedAgainDuring)
            expectControls(1, "that was released during the call");
        if (m_state == State::ReleasedDuring)
            expectControls(0, "that was released during the call");
        lookWhetherUsable();
        return m_wrong.str();
    }

    void call(const std::function<void()>& whenCalled)
    {
        m_stage->duringCall([this, whenCalled] {
            if (isDuring(m_state))
                act();
            whenCalled();
        });
        m_stage->call();
    }

private:
    void setStage()
    {
        if (m_state == State::NeverOffered)
            return;
        m_stage->offer();
        if (m_state == State::Unusable)
            m_stage->makeUnusable();
        if (m_state == State::ReleasedBefore) {
            m_stage->call();
            m_stage->release();
            return;
        }
        if (AnsweringControl* const control = m_stage->answering()) {
            control->when = whenOf(m_way);
            control->error = errorOf(m_state);
            m_secondAnswer = control->secondAnswer;
            if (m_way == Way::Later)
                control->beforeAnswer = [caller = "/proc/self/task/" + std::to_string(gettid())] {
                    while (!sleepsForEver(caller))
                        std::this_thread::yield();
                };
        }
        if (isDuring(m_state))
            m_stage->duringCall([this] { act(); });
    }

    // Inside the first call of the SDK.
    void act()
    {
        if (std::exchange(m_acted, true))
            return;
        if (m_state == State::Throws)
            throw Refusal();
        m_stage->release();
        if (m_state == State::OfferedAgainDuring)
            m_stage->offer();
    }

    std::string result()
    {
        try {
            return m_stage->call();
        } catch (const Refusal&) {
            return std::string(thrown);
        } catch (const std::exception& other) {
            return std::string("thrown: ") + other.what();
        }
    }

    std::string expectedResult() const
    {
        if (const auto error = errorOf(m_state))
            return m_operation.whenAnswered(error);
        switch (m_state) {
        case State::Throws:
            return std::string(thrown);
        case State::Unusable:
        case State::NeverOffered:
            return m_operation.whenAbsent;
        case State::ReleasedBefore:
            return m_operation.whenReleased;
        default:
            return m_operation.whenPresent;
        }
    }

    std::vector<std::string> expectedCalls() const
    {
        if (!isPresent(m_state))
            return {};
        if (m_state == State::Throws)
            return m_operation.callsWhenThrown;
        if (m_state == State::ReleasedDuring && m_operation.borrowsAnew)
            return {m_operation.sdkCalls.front()};
        return m_operation.sdkCalls;
    }

    std::vector<std::string> callsSinceBefore() const
    {
        const auto calls = m_stage->calls();
        return {calls.begin() + static_cast<std::ptrdiff_t>(m_callsBefore), calls.end()};
    }

    // With the same control if it is still there, and with another one.
    void lookWhetherUsable()
    {
        if (isThereAfterTheCall(m_state)) {
            m_stage->duringCall(nullptr);
            if (AnsweringControl* const control = m_stage->answering()) {
                control->when = When::AtOnce;
                control->error = {};
            }
            expect("the result of a second call", result(), m_operation.whenPresent);
        }
        m_stage->release();
        expectControls(0, "that was released after the call");
        m_stage->offer();
        expect("the result with the next control", result(), m_operation.whenPresent);
        m_stage->release();
        expectControls(0, "that came next and was released");
    }

    void expect(const std::string& what, const std::string& is, const std::string& expected)
    {
        if (is != expected)
            m_wrong << "    " << what << " is " << is << "\n    instead of " << expected << '\n';
    }

    void expectControls(std::size_t living, const std::string& which)
    {
        if (m_stage->livingControls() != living)
            m_wrong << "    somebody holds the control " << which << '\n';
    }

    const Operation& m_operation;
    const State m_state;
    const Way m_way;
    bool m_acted = false;
    std::shared_ptr<std::error_code> m_secondAnswer;
    std::size_t m_callsBefore = 0;
    std::ostringstream m_wrong;
    std::unique_ptr<Stage> m_stage = m_operation.makeStage(); // goes first: its control may still call act()
};

} // namespace

std::string_view name(State state)
{
    static constexpr std::array<std::string_view, states.size()> names = {
        "the control answers",
        "it answers with the number 0 of its own category",
        "it answers with a generic error",
        "it answers with a system error",
        "it answers with an error of its own category",
        "it throws",
        "it says that it cannot be used",
        "it was never offered",
        "it was released before the call",
        "it is released during the call",
        "it is released after the call",
        "it is released and offered again during the call",
    };
    return names.at(static_cast<std::size_t>(state));
}

std::string_view name(Way way)
{
    static constexpr std::array<std::string_view, ways.size()> names = {"inline", "later", "from another thread",
                                                                        "twice", "never"};
    return names.at(static_cast<std::size_t>(way));
}

std::string_view notApplicable(const Operation& operation, State state, Way way)
{
    if (operation.tells == Tells::Nothing) {
        if (way != Way::Inline)
            return "the SDK answers by returning, in no other way";
        if (isAnswerOfAnError(state))
            return "the SDK answers by returning, without an error code";
    }
    if (operation.sdkCalls.empty() && isDuring(state))
        return "the SDK is not called, so nothing happens during its call";
    if (state == State::Unusable) {
        const auto stage = operation.makeStage();
        stage->offer();
        if (!stage->makeUnusable())
            return "the control does not say whether it can be used";
    }
    if (!isPresent(state) && way != Way::Inline)
        return "the SDK is not called, so nothing answers";
    if (state == State::Throws && way != Way::Inline)
        return "what throws does not answer";
    if (way == Way::Never && isAnswerOfAnError(state))
        return "what never comes is no error";
    if (way == Way::Never && state == State::ReleasedAfter)
        return "a call that waits for ever has no afterwards";
    return {};
}

std::string tryCell(const Operation& operation, State state, Way way)
{
    if (way != Way::Never)
        return Trial(operation, state, way).run();
    return waitsForEver(
        [&](const std::function<void()>& whenCalled) { Trial(operation, state, way).call(whenCalled); });
}

} // namespace tov::testing

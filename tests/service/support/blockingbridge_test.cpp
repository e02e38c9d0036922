#include "service/support/blockingbridge.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace tov::testing {

namespace {

using devices::service::callAndWait;
using devices::service::request;
using ::testing::ElementsAre;

enum class Error : std::uint32_t { Failed = 0 };

/// A value that notes what happens to it.
class Noted
{
public:
    Noted() = default;
    explicit Noted(std::vector<std::string>& notes)
        : m_notes(&notes)
    {
    }
    Noted(const Noted& other)
        : m_notes(other.m_notes)
    {
        note("copied");
    }
    Noted(Noted&& other) noexcept
        : m_notes(std::exchange(other.m_notes, nullptr))
    {
    }
    Noted& operator=(const Noted& other)
    {
        m_notes = other.m_notes;
        note("copied");
        return *this;
    }
    Noted& operator=(Noted&& other) noexcept
    {
        m_notes = std::exchange(other.m_notes, nullptr);
        return *this;
    }
    ~Noted() = default;

    void note(const std::string& what) const
    {
        if (m_notes != nullptr)
            m_notes->push_back(what);
    }

private:
    std::vector<std::string>* m_notes = nullptr;
};

Noted convertNoted(Noted&& value)
{
    value.note("converted");
    return std::move(value);
}

/// A control with one operation, which moves its value into the answer.
struct NotedControl
{
    std::vector<std::string>& notes;
    std::error_code error;

    ~NotedControl() { notes.emplace_back("control destroyed"); }

    void get(const std::function<void(Noted, std::error_code)>& answer) { answer(Noted(notes), error); }
    void run(const std::function<void(std::error_code)>& answer) const { answer(error); }
};

using Result = std::expected<Noted, Error>;

} // namespace

TEST(BlockingBridge, MovesAValueFromTheAnswerToTheCaller)
{
    std::vector<std::string> notes;
    NotedControl control{notes, {}};
    EXPECT_TRUE((callAndWait<Result>(control, &NotedControl::get)));
    EXPECT_THAT(notes, ElementsAre());
}

TEST(BlockingBridge, ConvertsTheValueOnce)
{
    std::vector<std::string> notes;
    NotedControl control{notes, {}};
    EXPECT_TRUE((callAndWait<Result, convertNoted>(control, &NotedControl::get)));
    EXPECT_THAT(notes, ElementsAre("converted"));
}

TEST(BlockingBridge, NeverLooksAtAValueThatComesWithAnError)
{
    std::vector<std::string> notes;
    NotedControl control{notes, std::make_error_code(std::errc::io_error)};
    const auto result = callAndWait<Result, convertNoted>(control, &NotedControl::get);
    EXPECT_EQ(result.error(), Error::Failed);
    EXPECT_THAT(notes, ElementsAre());
}

TEST(BlockingBridge, LetsGoOfTheControlAfterTheAnswer)
{
    std::vector<std::string> notes;
    auto control = std::make_shared<NotedControl>(notes, std::error_code());
    const devices::ReacquiringControl<NotedControl> handle([&] { return sdk::ControlHandle<NotedControl>(control); });

    const auto getAndRelease = [&](NotedControl& locked, const auto& answer) {
        locked.get(answer);
        control.reset();
        notes.emplace_back("released");
    };
    EXPECT_TRUE((request<Result, convertNoted>(handle, getAndRelease)));
    EXPECT_THAT(notes, ElementsAre("converted", "released", "control destroyed"));
    EXPECT_FALSE((request<Result, convertNoted>(handle, getAndRelease))) << "nothing to call";
}

TEST(BlockingBridge, TellsOfAFailureAsItsResultTypeDoes)
{
    std::vector<std::string> notes;
    NotedControl control{notes, std::make_error_code(std::errc::io_error)};
    EXPECT_FALSE((callAndWait<bool>(control, &NotedControl::run)));
    EXPECT_EQ((callAndWait<std::expected<void, Error>>(control, &NotedControl::run)).error(), Error::Failed);
    EXPECT_EQ((callAndWait<std::expected<void, QString>>(control, &NotedControl::run)).error().toStdString(),
              control.error.message());
    control.error.clear();
    EXPECT_TRUE((callAndWait<bool>(control, &NotedControl::run)));
    EXPECT_TRUE((callAndWait<std::expected<void, Error>>(control, &NotedControl::run)));
    EXPECT_TRUE((callAndWait<std::expected<void, QString>>(control, &NotedControl::run)));
}

} // namespace tov::testing

#include "console/notifications/watching.h"

#include "console/commandline/command.h"
#include "console/session/consolesession.h"
#include "tools/text/number.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <thread>

namespace tov::console {

using std::chrono::milliseconds;

namespace {

std::optional<milliseconds> durationOf(const WatchArguments& arguments)
{
    if (!arguments.duration)
        return {};
    if (arguments.exercise > 0)
        throw BadUse("--exercise and --duration both say when to end: leave one out");
    return requireSeconds("--duration", *arguments.duration);
}

} // namespace

void addWatchOptions(Command& command, WatchArguments& arguments, const char* helpOfExercise)
{
    command.optional("--exercise", &arguments.exercise, "COUNT", helpOfExercise)
        .optional("--duration", &arguments.duration, "SECONDS", "End when so much time has passed")
        .takes({.name = "--csv",
                .target = &arguments.csv.path,
                .type = "FILE",
                .help = "Write everything to this file too, row by row",
                .mustNotBeEmpty = "a file name is needed"})
        .flag("--force", arguments.csv.force, "Replace the file if it is there");
}

milliseconds requireSeconds(const std::string& name, const std::string& text)
{
    constexpr double most = 1e9; // more than any command runs, and it fits in milliseconds
    const auto seconds = parseReal<double>(text);
    const bool fits = seconds && *seconds >= 0.001 && *seconds <= most; // which "nan" does not either
    if (!fits)
        throw BadUse("'" + text + "' is no value for " + name + ": use a number of seconds, from 0.001");
    return milliseconds(std::llround(*seconds * 1000));
}

void requireStillThere(ConsoleSession& console, const host::ControlName& control)
{
    if (!console.session().isPresent(control))
        throw Failure(console.timestamp() + ": the instrument has lost its " + std::string(control.name) + " control");
}

Watch::Watch(ConsoleSession& console, const WatchArguments& arguments)
    : m_console(console)
    , m_exercise(arguments.exercise)
    , m_duration(durationOf(arguments))
{
    if (m_exercise == 0 && !m_duration)
        std::cerr << "waiting for notifications; Ctrl-C ends\n";
}

void Watch::run(const std::function<void()>& exercise, const std::function<void()>& everyPeriod,
                milliseconds period) const
{
    for (int round = 0; round < m_exercise && goesOn(); ++round)
        exercise();
    if (m_exercise == 0 && m_duration && m_console.can(provider::ITestHooks::Ability::PassTime))
        passAtOnce(*m_duration, everyPeriod, period);
    else if (m_exercise == 0)
        wait(everyPeriod, period);
    m_console.following().requireReader();
}

bool Watch::goesOn() const
{
    m_console.following().requireReader();
    return !Interruption::isThere();
}

void Watch::passAtOnce(milliseconds duration, const std::function<void()>& everyPeriod, milliseconds period) const
{
    for (milliseconds left = duration; left.count() > 0 && goesOn(); left -= period) {
        m_console.passTime(std::min(left, period));
        if (left >= period)
            everyPeriod();
    }
}

void Watch::wait(const std::function<void()>& everyPeriod, milliseconds period) const
{
    using Clock = std::chrono::steady_clock;
    constexpr milliseconds step(50); // so that the user and the instrument are heard soon

    const auto begin = Clock::now();
    const auto end = m_duration ? begin + *m_duration : Clock::time_point::max();
    for (auto next = begin + period; goesOn();) {
        const bool over = Clock::now() >= end; // before the last look, so that the last period counts
        const auto until = over ? end : Clock::now();
        m_console.passOnNotices();
        for (; next <= until && goesOn(); next += period) {
            m_console.keepUp(period);
            everyPeriod();
        }
        if (over)
            break;
        std::this_thread::sleep_for(step);
    }
}

} // namespace tov::console

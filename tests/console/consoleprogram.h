#pragma once

#include "program.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>
#include <regex>
#include <string>

namespace tov::testing {

inline void start(QProcess& process, const QStringList& arguments)
{
    start(process, SERVICE_CONSOLE, arguments);
}

inline Outcome console(const QStringList& arguments)
{
    QProcess process;
    start(process, arguments);
    return finish(process);
}

// What the shell makes of these lines.
inline Outcome shell(const QByteArray& lines, const QStringList& options = {},
                     const QProcessEnvironment& environment = environmentOfTests(), const QStringList& arguments = {})
{
    QProcess process;
    process.setProcessEnvironment(environment);
    start(process, options + QStringList{"shell"} + arguments);
    process.write(lines);
    process.closeWriteChannel();
    return finish(process);
}

// One line that begins with the program's name, and nothing on standard output.
inline void expectError(const QStringList& arguments, int status, const std::string& says)
{
    using namespace ::testing;

    const Outcome run = console(arguments);
    const std::string shown = arguments.join(' ').toStdString();
    EXPECT_EQ(run.status, status) << shown;
    EXPECT_THAT(run.output, IsEmpty()) << shown;
    EXPECT_THAT(run.errors, StartsWith("service-console: ")) << shown;
    EXPECT_THAT(run.errors, HasSubstr(says)) << shown;
    EXPECT_EQ(std::ranges::count(run.errors, '\n'), 1) << shown << "\n" << run.errors;
}

// The times in front of lines, as 2026-01-31T12:00:00.000+01:00, are taken away; `count` of them are expected.
inline std::string withoutTimes(const std::string& lines, int count)
{
    static const std::regex time(R"((^|\n)\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}[+-]\d\d:\d\d )");
    EXPECT_EQ(std::distance(std::sregex_iterator(lines.begin(), lines.end(), time), std::sregex_iterator()), count)
        << lines;
    return std::regex_replace(lines, time, "$1");
}

} // namespace tov::testing

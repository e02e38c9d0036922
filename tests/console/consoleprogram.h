#pragma once

#include "program.h"

#include <gmock/gmock.h>

#include <algorithm>

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
                     const QProcessEnvironment& environment = environmentOfTests())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    start(process, options + QStringList{"shell"});
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

} // namespace tov::testing

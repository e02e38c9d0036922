#pragma once

#include <gmock/gmock.h>

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

#include <algorithm>
#include <string>

namespace tov::testing {

/// How a run of the console ended.
struct Outcome
{
    int status;
    std::string output;
    std::string errors;

    QJsonObject json() const { return QJsonDocument::fromJson(QByteArray::fromStdString(output)).object(); }
};

// What a program printed, with its lines ended by a line feed whatever the platform's way is.
inline std::string linesOf(QByteArray printed)
{
    return printed.replace("\r\n", "\n").toStdString();
}

// The environment without what whoever runs the tests has set for the console.
inline QProcessEnvironment environmentOfTests()
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.remove("DEVICESSERVICE_PROVIDER");
    environment.remove("DEVICESSERVICE_PROVIDER_PATH");
    return environment;
}

// Wine refuses to start a process now and then; one that has started is never tried again.
inline void start(QProcess& process, const QStringList& arguments)
{
    if (process.processEnvironment().isEmpty())
        process.setProcessEnvironment(environmentOfTests());
    process.start(SERVICE_CONSOLE, arguments);
    for (int failures = 0; !process.waitForStarted(-1) && failures < 3; ++failures)
        process.start(SERVICE_CONSOLE, arguments);
}

inline Outcome finish(QProcess& process)
{
    EXPECT_TRUE(process.waitForFinished(-1)) << process.errorString().toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {process.exitCode(), linesOf(process.readAllStandardOutput()), linesOf(process.readAllStandardError())};
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

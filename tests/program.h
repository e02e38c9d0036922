#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

#include <string>

namespace tov::testing {

/// How a run of a program ended.
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

// The environment without what whoever runs the tests has set for the programs.
inline QProcessEnvironment environmentOfTests()
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.remove("DEVICESSERVICE_PROVIDER");
    environment.remove("DEVICESSERVICE_PROVIDER_PATH");
    return environment;
}

// Wine refuses to start a process now and then; one that has started is never tried again.
inline void start(QProcess& process, const QString& program, const QStringList& arguments)
{
    if (process.processEnvironment().isEmpty())
        process.setProcessEnvironment(environmentOfTests());
    process.start(program, arguments);
    for (int failures = 0; !process.waitForStarted(-1) && failures < 3; ++failures)
        process.start(program, arguments);
}

inline Outcome finish(QProcess& process)
{
    EXPECT_TRUE(process.waitForFinished(-1)) << process.errorString().toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {process.exitCode(), linesOf(process.readAllStandardOutput()), linesOf(process.readAllStandardError())};
}

} // namespace tov::testing

#include "conformance/run/child.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QProcess>

#include <optional>
#include <stdexcept>

namespace tov::conformance {

using namespace Qt::StringLiterals;

namespace {

/// What the child has told so far.
class Told
{
public:
    // Whether there was anything.
    bool read(QProcess& child)
    {
        bool anything = false;
        while (child.canReadLine()) {
            const QByteArray line = child.readLine();
            if (!line.startsWith('\x1e'))
                continue; // somebody else's
            const QJsonObject record = QJsonDocument::fromJson(line.mid(1)).object();
            if (record.contains("at"_L1))
                m_at = record["at"_L1].toString();
            else if (record.contains("instrument"_L1))
                m_run.instrument = record;
            else if (record.contains("error"_L1))
                m_run.error = record["error"_L1].toString();
            else if (record.contains("goOnAfter"_L1))
                m_run.goOnAfter = record["goOnAfter"_L1].toString();
            else
                m_result = fromJson(record);
            anything = true;
        }
        return anything;
    }

    bool isOver() const { return m_result.has_value() || !m_run.error.isEmpty() || !m_run.goOnAfter.isEmpty(); }

    // Whether it ends with another status than 0.
    bool isBad() const { return !m_run.error.isEmpty() || (m_result && m_result->verdict == Verdict::Fail); }

    // What it comes to if something went wrong with the process; where it was, is what it said last.
    ChildRun finding(const QString& what)
    {
        m_run.result = {.verdict = Verdict::Fail, .seen = u"%1: %2"_s.arg(what, m_at), .leftOut = {}};
        return m_run;
    }

    ChildRun run()
    {
        m_run.result = m_result.value_or(Result());
        return m_run;
    }

private:
    ChildRun m_run;
    std::optional<Result> m_result;
    QString m_at = u"the program begins"_s;
};

ChildRun follow(QProcess& child, std::chrono::milliseconds silence)
{
    Told told;
    QDeadlineTimer patience(silence);
    while (child.state() != QProcess::NotRunning && !patience.hasExpired()) {
        child.waitForReadyRead(static_cast<int>(patience.remainingTime()));
        if (told.read(child)) // what others print does not show that the check goes on
            patience.setRemainingTime(silence);
    }
    if (child.state() != QProcess::NotRunning) {
        child.kill();
        child.waitForFinished(-1);
        return told.finding(u"hangs"_s);
    }
    told.read(child);
    if (child.exitStatus() != QProcess::NormalExit)
        return told.finding(u"crashes"_s);
    if (!told.isOver() || (child.exitCode() != 0 && !told.isBad()))
        return told.finding(u"ends the program with the status %1"_s.arg(child.exitCode()));
    return told.run();
}

} // namespace

ChildRun runInChild(const QStringList& arguments, std::chrono::milliseconds silence)
{
    QElapsedTimer clock;
    clock.start();
    QProcess child;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"MALLOC_PERTURB_"_s, u"165"_s); // so that what is freed looks freed
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    constexpr int attempts = 3; // a process may fail to start; one that has started is never tried again
    for (int attempt = 0; attempt < attempts; ++attempt) {
        child.start(QCoreApplication::applicationFilePath(), arguments);
        if (child.waitForStarted(-1))
            break;
    }
    if (child.state() == QProcess::NotRunning && child.error() == QProcess::FailedToStart)
        throw std::runtime_error("no process can be started: " + child.errorString().toStdString());
    ChildRun run = follow(child, silence);
    run.result.took = std::chrono::milliseconds(clock.elapsed());
    return run;
}

} // namespace tov::conformance

#include "console/consoleprogram.h"
#include "console/scratchfolder.h"

#include <QDateTime>
#include <QJsonArray>

#include <algorithm>
#include <regex>
#include <string>

namespace tov::testing {

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class ServiceConsoleWatching : public ScratchFolder
{
protected:
    const QString log = folder.filePath("log.csv");

    QList<QByteArray> logged() const { return read(log).trimmed().split('\n'); }
};

QDateTime timeOf(const QByteArray& line)
{
    return QDateTime::fromString(line.left(29), Qt::ISODateWithMs);
}

} // namespace

TEST_F(ServiceConsoleWatching, EndsAfterItsDurationWithReadingsSoFarApartOnTheInstrumentsClock)
{
    const Outcome run = console({"temperature", "watch", "--interval", "60", "--duration", "600"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.errors, IsEmpty());
    const auto lines = QByteArray::fromStdString(run.output).trimmed().split('\n');
    ASSERT_EQ(lines.size(), 11);
    for (qsizetype i = 1; i < lines.size(); ++i)
        EXPECT_GE(timeOf(lines[i - 1]).secsTo(timeOf(lines[i])), 60) << lines[i].toStdString();
}

TEST_F(ServiceConsoleWatching, TellsTimesWithTheirOffsetInJson)
{
    const std::string line = console({"--json", "temperature", "watch", "--duration", "0.5"}).output;
    const QString time =
        QJsonDocument::fromJson(QByteArray::fromStdString(line.substr(0, line.find('\n'))))["time"].toString();
    EXPECT_EQ(time.size(), 29) << time.toStdString();
    EXPECT_TRUE(timeOf(time.toLatin1()).isValid());
}

TEST_F(ServiceConsoleWatching, WritesEachReadingToAFile)
{
    const Outcome run = console({"temperature", "watch", "--interval", "10", "--duration", "30", "--csv", log});
    EXPECT_EQ(run.status, 0);
    const auto rows = logged();
    ASSERT_EQ(rows.size(), 5);
    EXPECT_THAT(rows[0].toStdString(), StartsWith("time,overall,Digital board,"));
    EXPECT_THAT(rows[1].toStdString(), EndsWith(",23,23,23,23,23,23,23,23,23,23"));
    for (const QByteArray& row : rows)
        EXPECT_EQ(row.count(','), 10) << row.toStdString();
}

TEST_F(ServiceConsoleWatching, WritesReadingsWithoutDigitsThatMeanNothing)
{
    const Outcome run =
        console({"--json", "temperature", "watch", "--interval", "7", "--duration", "21", "--csv", log});
    EXPECT_THAT(run.output, HasSubstr("23."));
    EXPECT_FALSE(std::regex_search(run.output + read(log).toStdString(), std::regex(R"(\d\.\d{7})")));
}

TEST_F(ServiceConsoleWatching, WritesNoRowsAmongTheReadings)
{
    for (const char* followed : {"monitor", "temperature watch", "calibration watch"})
        expectError(QString(followed).split(' ') + QStringList{"--duration", "1", "--csv", "-"}, 2,
                    "--csv needs a file");
}

TEST_F(ServiceConsoleWatching, WritesEachNotificationToAFile)
{
    EXPECT_EQ(console({"monitor", "--exercise", "1", "--csv", log}).status, 0);
    const auto rows = logged();
    ASSERT_EQ(rows.size(), 10);
    EXPECT_EQ(rows[0], "time,control,notification,numbers");
    EXPECT_THAT(rows[1].toStdString(), EndsWith(",serial-number,event,100001 100001"));
    EXPECT_EQ(console({"calibration", "watch", "--exercise", "1", "--csv", log, "--force"}).status, 0);
    EXPECT_THAT(logged()[1].toStdString(), EndsWith(",calibration-controller-1,unit-status-changed,"));
    expectError({"monitor", "--duration", "1", "--csv", folder.filePath("no/such/folder")}, 1, "cannot be written");
}

TEST_F(ServiceConsoleWatching, JudgesByTheWarmestReading)
{
    const QStringList watch{"temperature", "watch", "--interval", "60", "--duration", "600", "--max"};
    const Outcome tooWarm = console(watch + QStringList{"59.5"});
    EXPECT_EQ(tooWarm.status, 1);
    EXPECT_EQ(std::ranges::count(tooWarm.output, '\n'), 11) << "the run goes on";
    EXPECT_THAT(tooWarm.errors, StartsWith("service-console: warmer than 59.5 °C: Reference from 2"));
    EXPECT_THAT(tooWarm.errors, HasSubstr(", at most "));
    EXPECT_THAT(tooWarm.errors, Not(HasSubstr("Front end")));
    EXPECT_EQ(console(watch + QStringList{"100"}).status, 0);
    EXPECT_EQ(console(watch + QStringList{"-40"}).status, 1) << "it may be cold";
}

TEST_F(ServiceConsoleWatching, ExpectsControlsToNotify)
{
    const QStringList monitor{"monitor", "--duration", "2", "--expect", "temperature"};
    EXPECT_EQ(console(monitor).status, 0);
    const Outcome silent = console(monitor + QStringList{"--expect", "serial-number"});
    EXPECT_EQ(silent.status, 1);
    EXPECT_EQ(silent.errors, "service-console: serial-number did not notify\n");
    expectError({"monitor", "--duration", "2", "--expect", "nonsense"}, 2, "unknown control 'nonsense'");
}

TEST_F(ServiceConsoleWatching, RefusesNumbersThatAreWrongByThemselves)
{
    for (const char* wrong : {"-1", "0", "nan", "inf", "1e300", "x", "", "1 s"}) {
        const QString value = QString("=") + wrong;
        if (*wrong != '\0') {
            expectError({"monitor", "--duration" + value}, 2, "is no value for --duration");
            expectError({"temperature", "watch", "--interval" + value}, 2, "is no value for --interval");
        }
        expectError({"temperature", "watch", "--duration", "1", "--interval", wrong}, 2, "--interval");
    }
    for (const char* wrong : {"nan", "inf", "warm"})
        expectError({"temperature", "watch", "--max", wrong}, 2, "is no value for --max");
    expectError({"monitor", "--exercise", "1", "--duration", "1"}, 2, "leave one out");
    expectError({"temperature", "watch", "--exercise", "1", "--interval", "1"}, 2, "leave --interval out");
}

#ifdef Q_OS_LINUX
TEST_F(ServiceConsoleWatching, EndsAtOnceWhenItsOutputIsFull)
{
    for (const QStringList& arguments :
         {QStringList{"monitor"}, QStringList{"monitor", "--duration", "1e9"}, QStringList{"temperature", "watch"},
          QStringList{"calibration", "watch", "--exercise", "2000000000"}}) {
        QProcess process;
        process.setStandardOutputFile("/dev/full");
        start(process, arguments);
        ASSERT_TRUE(process.waitForFinished(-1));
        EXPECT_EQ(process.exitCode(), 3);
        EXPECT_THAT(linesOf(process.readAllStandardError()), EndsWith("cannot write to standard output\n"));
    }
    const Outcome full = console({"temperature", "watch", "--duration", "1e9", "--csv", "/dev/full"});
    EXPECT_EQ(full.status, 1);
    EXPECT_THAT(full.errors, HasSubstr("/dev/full cannot be written"));
}

TEST_F(ServiceConsoleWatching, EndsQuietlyWhenNobodyReadsOn)
{
    for (const char* arguments : {"monitor --exercise 2000000000", "monitor --duration 1e9", "monitor"}) {
        QProcess process;
        process.setProcessEnvironment(environmentOfTests());
        process.start("bash",
                      {"-c", QString("'%1' %2 | head -n 1; exit ${PIPESTATUS[0]}").arg(SERVICE_CONSOLE, arguments)});
        const Outcome run = finish(process);
        EXPECT_EQ(run.status, 3) << arguments;
        EXPECT_EQ(std::ranges::count(run.output, '\n'), 1);
        EXPECT_THAT(run.errors, Not(HasSubstr("service-console:")));
    }
}
#endif

} // namespace tov::testing

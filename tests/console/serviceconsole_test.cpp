#include "console/consoleprogram.h"
#include "console/scratchfolder.h"
#include "console/settings.h"
#include "patience.h"

#include <gmock/gmock.h>

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>

#include <algorithm>
#include <string>
#include <utility>

namespace tov::testing {

namespace {

using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

} // namespace

TEST(ServiceConsole, HelpsAtEveryLevel)
{
    const QStringList levels[] = {{},
                                  {"info"},
                                  {"probe"},
                                  {"providers"},
                                  {"instruments"},
                                  {"files"},
                                  {"files", "put"},
                                  {"memory"},
                                  {"memory", "dump"},
                                  {"pots"},
                                  {"pots", "set"},
                                  {"serial"},
                                  {"serial", "set"},
                                  {"usb"},
                                  {"usb", "set"},
                                  {"terms"},
                                  {"terms", "write"},
                                  {"ifsw"},
                                  {"ifsw", "plan"},
                                  {"ifsw", "save"},
                                  {"power-cal"},
                                  {"power-cal", "plan"},
                                  {"power-cal", "save"},
                                  {"corrections"},
                                  {"corrections", "ls"},
                                  {"corrections", "enable"},
                                  {"calibration"},
                                  {"calibration", "watch"},
                                  {"temperature"},
                                  {"temperature", "show"},
                                  {"temperature", "watch"},
                                  {"tune"},
                                  {"tune", "ls"},
                                  {"tune", "get"},
                                  {"tune", "set"},
                                  {"tune", "reset"},
                                  {"tune", "load-table"},
                                  {"shell"},
                                  {"monitor"},
                                  {"report"},
                                  {"backup"},
                                  {"restore"},
                                  {"diff"},
                                  {"demo"}};
    for (const QStringList& level : levels) {
        const Outcome run = console(level + QStringList{"--help"});
        EXPECT_EQ(run.status, 0);
        EXPECT_THAT(run.output,
                    HasSubstr("Usage: service-console" + (QStringList{""} + level).join(' ').toStdString()));
        EXPECT_THAT(run.errors, IsEmpty());
    }
}

TEST(ServiceConsole, TellsItsVersion)
{
    EXPECT_EQ(console({"--version"}).output, PROJECT_VERSION "\n");
}

TEST(ServiceConsole, InfoShowsVersionsInstrumentAndControls)
{
    const Outcome run = console({"info"});
    EXPECT_EQ(run.status, 0);
    for (const char* part : {PROJECT_VERSION, qVersion(), "simulated", "lo-leakage", "0x39CE7F28FB8C58BD",
                             "0x33F09CC532B7707A", "yq-synthesis", "0xA045AB34EA41DF44", "0xF636764463DEE854"})
        EXPECT_THAT(run.output, HasSubstr(part));
    EXPECT_THAT(run.output, Not(HasSubstr("missing")));
}

TEST(ServiceConsole, InfoGivesTheSameInJson)
{
    const QJsonObject answer = console({"--missing", "yq-synthesis", "info", "--json"}).json();
    EXPECT_EQ(answer["library-built-with"].toString(), PROJECT_VERSION);
    EXPECT_EQ(answer["qt"].toString(), qVersion());
    const QJsonArray controls = answer["controls"].toArray();
    ASSERT_EQ(controls.size(), 20);
    EXPECT_EQ(controls[9].toObject(), (QJsonObject{{"control", "lo-leakage"},
                                                   {"registry-key", "0x39CE7F28FB8C58BD"},
                                                   {"sdk-key", "0x33F09CC532B7707A"},
                                                   {"state", "present"}}));
    EXPECT_EQ(controls[12].toObject()["state"].toString(), "missing");
}

TEST(ServiceConsole, ProbeAnswersByItsExitStatus)
{
    EXPECT_EQ(console({"probe", "lo-leakage"}).status, 0);
    EXPECT_EQ(console({"--missing", "lo-leakage", "probe", "yq-synthesis"}).status, 0);

    const Outcome missing = console({"--missing", "lo-leakage", "--json", "probe", "lo-leakage"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.json(), (QJsonObject{{"control", "lo-leakage"}, {"present", false}}));

    expectError({"probe", "nonsense"}, 2, "unknown control 'nonsense'; there are file-memory, potentiometers");
    expectError({"probe"}, 2, "required");
    expectError({"probe", "lo-leakage", "yq-synthesis"}, 2, "unexpected 'yq-synthesis'");
}

TEST(ServiceConsole, ShowsAndChangesSettings)
{
    const auto tune = [](const QStringList& words) { return console(QStringList{"--json", "tune"} + words).json(); };
    EXPECT_EQ(tune({"get", "lo-leakage", "lo-leakage"}), (QJsonObject{{"lo-leakage", false}}));
    EXPECT_EQ(tune({"set", "lo-leakage", "lo-leakage", "on"}), (QJsonObject{{"lo-leakage", true}}));
    EXPECT_EQ(tune({"set", "yq-synthesis", "manual-if", "on"}), (QJsonObject{{"manual-if", true}}));
    EXPECT_EQ(tune({"set", "yq-synthesis", "selected-if", "2"}), (QJsonObject{{"selected-if", 2}}));
    EXPECT_EQ(tune({"get", "yq-synthesis", "selected-if"}), (QJsonObject{{"selected-if", 0}}));
    EXPECT_EQ(tune({"get", "yq-synthesis", "supported-ifs"}),
              (QJsonObject{{"supported-ifs", QJsonArray{2.5e6, 5e6, 7.5e6, 10.7e6, 21.4e6}}, {"unit", "Hz"}}));
    EXPECT_EQ(console({"tune", "get", "yq-synthesis", "manual-if"}).output, "off\n");
    EXPECT_EQ(console({"tune", "get", "yq-synthesis", "supported-ifs"}).output,
              "2500000 5000000 7500000 10700000 21400000\n");
}

TEST(ServiceConsole, RefusesMalformedValues)
{
    const QStringList setLoLeakage{"tune", "set", "lo-leakage", "lo-leakage"};
    expectError(setLoLeakage + QStringList{"maybe"}, 2, "'maybe' is no value for lo-leakage: use on or off");
    expectError(setLoLeakage + QStringList{""}, 2, "'' is no value");
    expectError(setLoLeakage, 2, "required");
    for (const char* malformed : {"two", "2x", "1.5", "99999999999", " 2", "+2"})
        expectError({"tune", "set", "yq-synthesis", "selected-if", malformed}, 2, "use a whole number");
    expectError({"tune", "set", "yq-synthesis", "supported-ifs", "1"}, 2, "supported-ifs can only be read");
    expectError({"tune", "set", "yq-synthesis", "nonsense", "1"}, 2, "unknown setting 'nonsense'; there are manual-if");
    expectError({"tune", "get", "yq-synthesis", "nonsense"}, 2, "unknown setting");
    expectError({"--missing", "nonsense", "info"}, 2, "unknown control 'nonsense'");
}

TEST(ServiceConsole, RefusesUnknownAndIncompleteCommands)
{
    expectError({}, 2, "a command is missing");
    expectError({"corrections"}, 2,
                "a command is missing after 'service-console corrections'; there are ls, enable, disable");
    expectError({"nonsense"}, 2, "unknown command 'nonsense'");
    expectError({"serial", "nonsense"}, 2, "unknown command 'nonsense' after 'service-console serial'");
    expectError({"info", "demo"}, 2, "unexpected 'demo'");
    expectError({"info", "--nonsense"}, 2, "unknown option '--nonsense'; see 'service-console info --help'");
}

TEST(ServiceConsole, FailsWhenTheInstrumentDoesNotDoIt)
{
    expectError({"tune", "set", "wn0807-power", "attenuation-db", "10.3"}, 1,
                "did not take 10.3 for attenuation-db but 10.25; it holds 0 as before");
    expectError({"tune", "set", "wn0807-power", "attenuation-db", "-1e9"}, 1, "did not take -1000000000");
    expectError({"tune", "set", "wn0807-power", "attenuation-db", "-inf", "--color", "never"}, 2, "'-inf' is no value");
    expectError({"--missing", "lo-leakage", "tune", "set", "lo-leakage", "lo-leakage", "on"}, 1,
                "has no lo-leakage control");
    expectError({"--missing", "yq-synthesis", "tune", "get", "yq-synthesis", "manual-if"}, 1,
                "has no yq-synthesis control");
}

#ifdef Q_OS_LINUX
TEST(ServiceConsole, FailsWhenItsAnswerDoesNotGetOut)
{
    for (const QStringList& arguments : {QStringList{"info"}, QStringList{"--help"}}) {
        QProcess process;
        process.setStandardOutputFile("/dev/full");
        start(process, arguments);
        ASSERT_TRUE(process.waitForFinished(-1));
        EXPECT_EQ(process.exitCode(), 3);
        EXPECT_THAT(linesOf(process.readAllStandardError()), HasSubstr("cannot write to standard output"));
    }
}
#endif

namespace {

class KeptInstrument : public ScratchFolder
{
protected:
    Outcome kept(const QStringList& arguments) { return console(QStringList{"--state", state, "--yes"} + arguments); }
};

} // namespace

TEST_F(KeptInstrument, IsTheSameInEveryRun)
{
    EXPECT_EQ(kept({"serial", "set", "4711"}).status, 0);
    EXPECT_EQ(kept({"tune", "set", "yq-synthesis", "selected-if", "3"}).status, 0);
    EXPECT_EQ(kept({"pots", "set", "6", "-5", "--eeprom"}).status, 0);
    EXPECT_EQ(kept({"usb", "set", "1", "0x2", "65535"}).status, 0);

    EXPECT_EQ(kept({"serial", "get"}).output, "4711\n");
    EXPECT_EQ(kept({"tune", "get", "yq-synthesis", "selected-if"}).output, "3\n");
    EXPECT_EQ(kept({"pots", "get", "6"}).output, "-5\n");
    EXPECT_THAT(kept({"usb", "get"}).output, HasSubstr("0x0001  0x0002  0xFFFF"));
    EXPECT_EQ(console({"serial", "get"}).output, "100001\n") << "without a state the instrument is new";
}

TEST_F(KeptInstrument, IsNotChangedByACommandThatFails)
{
    ASSERT_EQ(kept({"serial", "set", "1"}).status, 0);
    const QByteArray before = read(state);
    EXPECT_EQ(kept({"pots", "set", "0", "256", "--eeprom"}).status, 1);
    EXPECT_EQ(kept({"files", "rm", "nothing"}).status, 1);
    EXPECT_EQ(kept({"serial", "set", "-1"}).status, 2);
    EXPECT_EQ(kept({"terms", "write", write("broken", "{")}).status, 1);
    EXPECT_EQ(read(state), before);
}

TEST_F(KeptInstrument, IsTheOldOrTheNewOneAfterACommandWasKilled)
{
    QElapsedTimer sinceStart;
    sinceStart.start();
    ASSERT_EQ(kept({"serial", "set", "1000"}).status, 0);
    const qint64 wholeCommand = sinceStart.nsecsElapsed();
    const Patience patience("one command was killed too early to change the number, and one too late");
    constexpr int sweep = 40;
    bool tooEarly = false;
    bool tooLate = false;
    for (int round = 0, number = 1000; round < sweep || (!(tooEarly && tooLate) && patience.lasts()); ++round) {
        QProcess process;
        start(process, {"--state", state, "--yes", "serial", "set", QString::number(1001 + round)});
        ASSERT_TRUE(process.waitForStarted(-1));
        // Later in each round: from before the program does anything to after it has ended, and once more where it has
        // come to take longer.
        const qint64 latest = wholeCommand * 2 << (round / sweep);
        sinceStart.start();
        while (sinceStart.nsecsElapsed() < latest / sweep * (round % sweep)) {
        }
        process.kill();
        process.waitForFinished(-1);

        const Outcome outcome = kept({"serial", "get"});
        ASSERT_EQ(outcome.status, 0) << outcome.errors;
        const int before = std::exchange(number, std::stoi(outcome.output));
        EXPECT_THAT(number, AnyOf(before, 1001 + round));
        (number == before ? tooEarly : tooLate) = true;
    }
}

TEST_F(KeptInstrument, IsUsedByOneCommandAtATime)
{
    QProcess monitor;
    monitor.setReadChannel(QProcess::StandardError);
    start(monitor, {"--state", state, "monitor"});
    ASSERT_TRUE(monitor.waitForReadyRead(-1));
    expectError({"--state", state, "--wait", "0", "serial", "get"}, 1, "another command uses this state");
    monitor.kill();
    monitor.waitForFinished(-1);
    EXPECT_EQ(kept({"serial", "get"}).status, 0);
}

TEST_F(KeptInstrument, IsUsedByOneCommandAfterTheOther)
{
    constexpr int commands = 12;
    std::vector<std::unique_ptr<QProcess>> writing;
    for (int number = 0; number < commands; ++number)
        start(*writing.emplace_back(std::make_unique<QProcess>()),
              {"--state", state, "--yes", "--wait", "600", "serial", "set", QString::number(1000 + number)});
    for (const auto& process : writing)
        EXPECT_EQ(finish(*process).status, 0);
    EXPECT_THAT(kept({"serial", "get"}).output, StartsWith("10"));
}

TEST_F(KeptInstrument, ReadsNoMoreOfAFileThanFits)
{
    const QString big = folder.filePath("big");
    QFile file(big);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(300 * 1024));
    file.close();
    expectError({"--state", state, "files", "put", big}, 1, "has more than the 262144 bytes that fit");
    EXPECT_THAT(kept({"--json", "files", "ls"}).json()["files"].toArray(), IsEmpty());
}

TEST_F(KeptInstrument, RefusesAFileOfAnotherKindAndLeavesItAsItIs)
{
    for (const QByteArray& foreign : {QByteArray("a letter"), QByteArray(), QByteArray("\xA0")}) {
        const QString path = write("foreign", foreign);
        expectError({"--state", path, "serial", "get"}, 1, "no state of a simulated instrument");
        expectError({"--state", path, "--yes", "serial", "set", "1"}, 1, "no state of a simulated instrument");
        EXPECT_EQ(read(path), foreign);
    }
    expectError({"--state", folder.filePath("no/such/folder"), "serial", "get"}, 1, "folder");
    expectError({"--state", "", "serial", "get"}, 2, "a file name is needed");
    expectError({"--state=", "serial", "get"}, 2, "nothing stands behind '--state='");
}

TEST_F(KeptInstrument, CopiesFilesWhole)
{
    const QByteArray contents("\0\xFF binary", 9);
    const QString local = write("local", contents);
    EXPECT_EQ(kept({"files", "put", local}).status, 0);
    EXPECT_EQ(kept({"files", "put", local, "../../etc/passwd"}).status, 0) << "a name is no path";
    EXPECT_EQ(kept({"files", "ls", "--json"}).json()["files"].toArray().size(), 2);
    EXPECT_EQ(kept({"files", "df"}).output, "capacity in bytes  used  free\n262144             18    262126\n");

    const QString copy = folder.filePath("copy");
    EXPECT_EQ(kept({"files", "get", "../../etc/passwd", copy}).status, 0);
    EXPECT_EQ(read(copy), contents);
    EXPECT_EQ(kept({"files", "rm", "local"}).status, 0);
    expectError({"--state", state, "files", "get", "local", copy}, 1, "the instrument has no file 'local'");
    EXPECT_EQ(read(copy), contents) << "nothing half-written";
    EXPECT_FALSE(QFile::exists(folder.filePath("etc")));
}

#ifdef Q_OS_UNIX
TEST_F(KeptInstrument, WritesToADeviceInsteadOfReplacingIt)
{
    const QString link = folder.filePath("device");
    ASSERT_TRUE(QFile::link("/dev/null", link));
    EXPECT_EQ(kept({"memory", "dump", link}).status, 0);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_FALSE(QFileInfo("/dev/null").isFile());
}

TEST_F(KeptInstrument, AnswersNothingWhenItCannotBeKept)
{
    const QString link = folder.filePath("dangling");
    ASSERT_TRUE(QFile::link(folder.filePath("no/such/file"), link));
    expectError({"--state", link, "--yes", "serial", "set", "5"}, 1, "cannot be saved");
}
#endif

TEST_F(KeptInstrument, TakesNamesOfAnyScript)
{
    const QString name = QStringLiteral("Größe-周波数.txt");
    EXPECT_EQ(kept({"files", "put", write(name, "x")}).status, 0);
    EXPECT_THAT(kept({"files", "ls"}).output, HasSubstr(name.toStdString()));
    EXPECT_EQ(kept({"files", "get", name, folder.filePath("copy")}).status, 0);
    EXPECT_EQ(read(folder.filePath("copy")), "x");
}

TEST_F(KeptInstrument, SaysWhyAFileCannotBeCopied)
{
    expectError({"files", "put", folder.filePath("nothing")}, 1, "cannot be read");
    const QString large = write("large", QByteArray(300'000, 'x'));
    expectError({"files", "put", large}, 1, "large has more than the 262144 bytes that fit");
    const QString local = write("local", "text");
    kept({"files", "put", local});
    expectError({"--state", state, "files", "get", "local", folder.filePath("no/such/folder")}, 1, "cannot be written");
    expectError({"--missing", "file-memory", "files", "ls"}, 1, "has no file-memory control");
}

TEST_F(KeptInstrument, CopiesErasesAndChecksTheMemory)
{
    const QString image = write("image", "pattern");
    EXPECT_THAT(kept({"memory", "load", image}).errors, HasSubstr("has 7 bytes and the memory 65536; --pad fills"));
    const Outcome loaded = kept({"memory", "load", "--pad", image});
    EXPECT_EQ(loaded.status, 0);
    EXPECT_EQ(loaded.output, "written: 65536 bytes\n");
    EXPECT_THAT(loaded.errors, HasSubstr("writing the memory 100 %\n"));

    const QString dump = folder.filePath("dump");
    EXPECT_EQ(kept({"memory", "dump", dump, "--json"}).json(), (QJsonObject{{"bytes", 65536}}));
    EXPECT_EQ(read(dump), "pattern" + QByteArray(65536 - 7, '\xFF'));

    EXPECT_EQ(kept({"memory", "check"}).output, "intact\n");
    EXPECT_EQ(kept({"memory", "erase", "--json"}).json(), (QJsonObject{{"erased", true}}));
    EXPECT_THAT(kept({"memory", "dump", dump}).errors, HasSubstr("is there already; --force replaces it"));
    EXPECT_EQ(kept({"memory", "dump", dump, "--force"}).status, 0);
    EXPECT_EQ(read(dump), QByteArray(65536, '\xFF'));

    const Outcome tooLarge = kept({"memory", "load", "--pad", write("huge", QByteArray(65537, 'x'))});
    EXPECT_EQ(tooLarge.status, 1);
    EXPECT_THAT(tooLarge.errors, HasSubstr("has 65537 bytes and the memory 65536"));
}

TEST_F(KeptInstrument, StoresTermsFromAFile)
{
    EXPECT_EQ(kept({"terms", "flag", "--json"}).json(), (QJsonObject{{"flag", false}}));
    const QString file = write("terms.json", R"({ "time": "2026-01-31T12:00:00Z", "parameter": 0.5,
        "records": [ { "key": "9007199254740993", "value": -0.25, "number": -3 } ], "frequencies": [1e9],
        "ports": [ { "port": 1, "directivity": [[0, 1]], "source-match": [[2, 3]], "reflection-tracking": [[4, 5]] } ],
        "paths": [ { "source-port": 1, "receiver-port": 2, "load-match": [[0, 0]],
                     "transmission-tracking": [[1, 0]], "isolation": [[0, 0]] } ] })");
    EXPECT_EQ(kept({"terms", "write", file}).output, "written with 1 records\n");
    EXPECT_EQ(kept({"terms", "flag"}).output, "on\n");
    EXPECT_EQ(kept({"terms", "ls", "--json"}).json()["records"].toArray(),
              (QJsonArray{QJsonObject{{"key", "9007199254740993"}, {"value", -0.25}, {"number", -3}}}));
}

TEST_F(KeptInstrument, SaysWhereAFileOfTermsIsWrong)
{
    const std::pair<const char*, const char*> wrong[] = {
        {"{", "byte"},
        {"[]", "expected an object"},
        {"{}", "time: expected a time with its zone"},
        {R"({"time": "2026-01-31T12:00:00"})", "time: expected a time with its zone"},
        {R"({"time": "2026-01-31T12:00:00Z", "records": [{"key": "x"}]})", "records[0].key: expected a whole number"},
        {R"({"time": "2026-01-31T12:00:00Z", "records": [{"key": 1.5}]})", "records[0].key: expected a whole number"},
        {R"({"time": "2026-01-31T12:00:00Z", "records": [{"key": 9007199254740993}]})", "records[0].key: expected"},
        {R"({"time": "2026-01-31T12:00:00Z", "records": [{"key": 1, "value": 1, "number": 1e300}]})",
         "records[0].number: expected a whole number"},
        {R"({"time": "2026-01-31T12:00:00Z", "records": [1]})", "records[0]: expected an object"},
        {R"({"time": "2026-01-31T12:00:00Z", "recordz": []})", "recordz: expected another name"},
        {R"({"time": "2026-01-31T12:00:00Z", "records": [{"key": 1, "valu": 1}]})",
         "records[0].valu: expected another"},
        {R"({"time": "2026-01-31T12:00:00Z", "ports": 1})", "ports: expected a list"},
        {R"({"time": "2026-01-31T12:00:00Z", "frequencies": [1, "x"]})", "frequencies[1]: expected a number"},
        {R"({"time": "2026-01-31T12:00:00Z", "frequencies": [1], "ports": [{"port": 1, "directivity": [[1]]}]})",
         "ports[0].directivity[0]: expected [real, imaginary]"},
        {R"({"time": "2026-01-31T12:00:00Z", "frequencies": [1], "ports": [{"port": 1}]})",
         "ports[0].directivity: expected a value for each of the 1 frequencies"}};
    for (const auto& [contents, says] : wrong)
        expectError({"terms", "write", write("terms.json", contents)}, 1, says);
}

TEST_F(KeptInstrument, GivesAFrequencyPlanAndWritesItToAFile)
{
    EXPECT_EQ(console({"ifsw", "plan"}).output, "start (Hz)  stop (Hz)    points\n"
                                                "10000000    1000000000   100\n"
                                                "1000000000  8000000000   141\n"
                                                "8000000000  20000000000  121\n");
    const QString file = folder.filePath("plan.csv");
    EXPECT_EQ(console({"power-cal", "plan", file}).output, "written with 3 segments\n");
    EXPECT_EQ(read(file), "start,stop,points\n10000000,1000000000,100\n1000000000,8000000000,141\n"
                          "8000000000,20000000000,121\n");
    EXPECT_EQ(console({"ifsw", "plan", "--json"}).json()["segments"].toArray().at(1).toObject(),
              (QJsonObject{{"start", 1e9}, {"stop", 8e9}, {"points", 141}}));
}

TEST_F(KeptInstrument, SavesCalibrationDataFromFiles)
{
    const QString ifsw = write("ifsw.csv", "# measured by hand\nvector, value1,value2,value3\r\n\n1,1e9,,\n"
                                           "2,0.5,-0.25,1\n7,1,2,3\n");
    EXPECT_EQ(console({"--state", state, "ifsw", "save", ifsw}).output, "saved 3 records\n");
    const QString power = write("power.csv", "time,2026-01-31T12:00:00Z\nparameter,1.5\n"
                                             "value1,value2,value3,value4,value5,value6,value7,value8,value9\n"
                                             "1e9,-10.5,0.25,1,0,20,0xFF,0.5,0.125\n");
    EXPECT_EQ(console({"--state", state, "--json", "power-cal", "save", power}).json(), (QJsonObject{{"points", 1}}));
    EXPECT_TRUE(read(state).contains("factory-power-calibration"));
}

TEST_F(KeptInstrument, SaysWhereAFileOfCalibrationDataIsWrongAndSavesNothing)
{
    const auto refusesIfsw = [&](const QByteArray& contents, const std::string& says) {
        const QString file = write("ifsw.csv", contents);
        expectError({"--state", state, "ifsw", "save", file}, 1, file.toStdString() + ", " + says);
    };
    const QByteArray heading = "vector,value1,value2,value3\n";
    refusesIfsw("", "last line: expected 'vector' instead of the end");
    refusesIfsw("vector,value1\n", "line 1, column 8: expected 4 fields instead of 2");
    refusesIfsw("vector,value1,value2,value4\n", "line 1, column 22: expected 'value3' instead of 'value4'");
    refusesIfsw(heading + "2,1,2,x\n", "line 2, column 7: expected a number that fits instead of 'x'");
    refusesIfsw(heading + "\n2,1,2,3\n8,1,2,3\n", "line 4, column 1: expected a vector from 1 to 7 instead of '8'");
    refusesIfsw(heading + "1,1,2,\n", "line 2, column 5: expected nothing");
    refusesIfsw(heading + "2,1,2,3,4\n", "line 2, column 9: expected the end of the line instead of '4'");
    refusesIfsw(heading + "2,1,2,1e999\n", "line 2, column 7: expected a number that fits");
    refusesIfsw(heading + "2,1,nan,3\n", "line 2, column 5: expected a number that fits instead of 'nan'");
    refusesIfsw(heading + "2,-inf,2,3\n", "line 2, column 3: expected a number that fits instead of '-inf'");
    refusesIfsw(heading, "last line: expected a line of values instead of the end");

    const auto refusesPower = [&](const QByteArray& contents, const std::string& says) {
        const QString file = write("power.csv", contents);
        expectError({"--state", state, "power-cal", "save", file}, 1, file.toStdString() + ", " + says);
    };
    const QByteArray head = "time,2026-01-31T12:00:00Z\nparameter,1.5\n"
                            "value1,value2,value3,value4,value5,value6,value7,value8,value9\n";
    refusesPower("time\n", "line 1, column 1: expected 2 fields instead of 1");
    refusesPower("time,2026-01-31T12:00:00\n", "line 1, column 6: expected a time with its zone");
    refusesPower("time,2026-01-31T12:00:00Z\n", "last line: expected 'parameter' instead of the end");
    refusesPower("parameter,1\n", "line 1, column 1: expected 'time' instead of 'parameter'");
    refusesPower(head, "last line: expected a line of values instead of the end");
    refusesPower(head + "1,2,3,256,5,6,7,8,9\n",
                 "line 4, column 7: expected a whole number that fits instead of '256'");
    refusesPower(head + "1,2,3,4,5,6,7,8,1e39\n", "line 4, column 17: expected a number that fits");
    EXPECT_FALSE(QFile::exists(state));
    expectError({"ifsw", "save", folder.filePath("none.csv")}, 1, "cannot be read");
    expectError({"--missing", "ifsw-calibration", "ifsw", "plan"}, 1, "has no ifsw-calibration control");
}

TEST_F(KeptInstrument, SwitchesCorrectionsAndSaysWhyNot)
{
    EXPECT_EQ(console({"--state", state, "corrections", "enable", "correction-3"}).output, "correction-3 is enabled\n");
    EXPECT_EQ(console({"--state", state, "corrections", "disable", "2", "--json"}).json(),
              (QJsonObject{{"correction", "correction-2"}, {"enabled", false}}));
    const QJsonArray list = console({"--state", state, "corrections", "ls", "--json"}).json()["corrections"].toArray();
    ASSERT_EQ(list.size(), 10);
    EXPECT_EQ(list[1].toObject()["enabled"], false);
    EXPECT_EQ(list[2].toObject(),
              (QJsonObject{{"correction", "correction-3"}, {"valid", true}, {"enabled", true}, {"modifiable", true}}));
    EXPECT_THAT(console({"corrections", "ls"}).output, HasSubstr("correction-6   no     no       yes\n"));

    expectError({"corrections", "enable", "6"}, 1, "correction-6 was not enabled: its data are not valid");
    expectError({"corrections", "disable", "1"}, 1, "correction-1 was not disabled: it is not modifiable");
    expectError({"corrections", "enable", "11"}, 2,
                "there is no correction '11'; there are correction-1, correction-2");
}

TEST(ServiceConsole, PrintsTheSignalsOfACalibrationController)
{
    const Outcome run = console({"calibration", "watch", "--controller", "2", "--exercise", "1"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(withoutTimes(run.output, static_cast<int>(std::ranges::count(run.output, '\n'))),
                StartsWith("calibration-controller-2 unit-status-changed\n"
                           "calibration-controller-2 unit-status-changed\n"
                           "calibration-controller-2 configuration-changed\n"
                           "calibration-controller-2 configuration-changed\n"
                           "calibration-controller-2 save-progress 0\n"
                           "calibration-controller-2 save-progress 10\n"));
    EXPECT_THAT(run.output, HasSubstr("calibration-controller-2 save-progress 100\n"));
    EXPECT_THAT(
        console({"--json", "calibration", "watch", "--exercise", "1"}).output,
        StartsWith(
            R"({"control":"calibration-controller-1","notification":"unit-status-changed","numbers":[],"time":"2)"));
    expectError({"calibration", "watch", "--controller", "3"}, 2, "there is no controller '3'; there are 1, 2");
}

TEST(ServiceConsole, PrintsNotificationsAsTheyCome)
{
    const Outcome run = console({"monitor", "--exercise", "2"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(std::ranges::count(run.output, '\n'), 18);
    EXPECT_THAT(withoutTimes(run.output, 18), StartsWith("serial-number event 100001 100001\n"
                                                         "memory-operations notification1 65536 16384\n"));
    const QByteArray json = QByteArray::fromStdString(console({"monitor", "--exercise", "1", "--json"}).output);
    for (const QByteArray& line : json.trimmed().split('\n'))
        EXPECT_TRUE(QJsonDocument::fromJson(line)["time"].isString()) << line.toStdString();
    expectError({"monitor", "--exercise", "0"}, 2, "--exercise");
}

#ifdef Q_OS_UNIX
TEST(ServiceConsole, MonitorsUntilItIsStopped)
{
    QProcess process;
    process.setReadChannel(QProcess::StandardError);
    start(process, {"monitor"});
    ASSERT_TRUE(process.waitForStarted(-1));
    ASSERT_TRUE(process.waitForReadyRead(-1)) << "it says that it waits";
    process.terminate();
    ASSERT_TRUE(process.waitForFinished(-1));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
}
#endif

TEST(ServiceConsole, WorksThePotentiometers)
{
    const QJsonArray list = console({"pots", "ls", "--json"}).json()["potentiometers"].toArray();
    ASSERT_EQ(list.size(), 8);
    EXPECT_EQ(list[0].toObject(),
              (QJsonObject{{"index", 0}, {"name", "LO level"}, {"word1", 0}, {"word2", 255}, {"eeprom", 128}}));
    EXPECT_EQ(console({"pots", "set", "1", "7", "--ram", "--json"}).json(), (QJsonObject{{"ram", 7}}));
    expectError({"pots", "get", "8"}, 1, "'pots ls' shows the potentiometers");
    expectError({"pots", "get", "-1"}, 2, "'-1' is no value for index");
    expectError({"pots", "set", "1", "7"}, 2, "--ram,--eeprom");
    expectError({"pots", "set", "1", "256", "--ram"}, 1, "failed");
    expectError({"usb", "set", "1", "2", "65536"}, 2, "'65536' is no value for id3");
    EXPECT_THAT(console({"usb", "set", "010", "0x10", "08", "--yes"}).output, HasSubstr("0x000A  0x0010  0x0008"))
        << "leading zeros change nothing";
    EXPECT_EQ(console({"serial", "set", "000123", "--yes"}).output, "123\n");
    expectError({"serial", "set", "4294967296"}, 2, "'4294967296' is no value for number");
    expectError({"serial", "set", "0x"}, 2, "'0x' is no value for number");
}

TEST(ServiceConsole, ShowsAndFollowsTheTemperatures)
{
    EXPECT_THAT(console({"temperature", "show"}).output, HasSubstr("\nDigital board  23.0\n"));
    const QJsonObject answer = console({"--json", "temperature", "show"}).json();
    EXPECT_EQ(answer["temperature"].toDouble(), 23.0);
    EXPECT_GE(answer["modules"].toArray().size(), 8);

    const std::string lines = console({"temperature", "watch", "--exercise", "3"}).output;
    EXPECT_THAT(withoutTimes(lines, 4), StartsWith("overall 23.0, Digital board 23.0, "));
    EXPECT_EQ(std::ranges::count(lines, '\n'), 4);
    const std::string json = console({"temperature", "watch", "--exercise", "2", "--json"}).output;
    EXPECT_THAT(json, StartsWith("{\"modules\":[{\"module\":\"Digital board\",\"temperature\":"));
    EXPECT_EQ(std::ranges::count(json, '\n'), 3);
    expectError({"--missing", "temperature", "temperature", "show"}, 1, "has no temperature control");
}

TEST(ServiceConsole, ListsEverySettingOfTheModules)
{
    const QJsonArray settings = console({"tune", "ls", "--json"}).json()["settings"].toArray();
    EXPECT_GE(settings.size(), 80);
    for (const auto& setting : settings)
        for (const char* part : {"module", "setting", "value", "type", "allowed", "meaning"})
            EXPECT_TRUE(setting.toObject().contains(QLatin1StringView(part))) << part;
    const QJsonObject power{
        {"module", "ulk-power"}, {"setting", "lo-power"},     {"value", 32.0}, {"unit", ""}, {"type", "0..255"},
        {"allowed", "0..63"},    {"meaning", "LO power code"}};
    EXPECT_TRUE(settings.contains(power));
    EXPECT_THAT(console({"tune", "ls", "yq-synthesis"}).output, Not(HasSubstr("ulk-power")));
    EXPECT_THAT(console({"--missing", "ulk-power", "tune", "ls"}).output, HasSubstr("missing"));
    expectError({"tune", "ls", "nonsense"}, 2, "unknown module 'nonsense'; there are ulk-synthesis, ulk-power");
}

namespace {

// Settings that are one thing with another one.
bool moveTogether(const QString& one, const QString& other)
{
    const auto isDac = [](const QString& name) { return name == "union-dac" || name.startsWith("dac-"); };
    return (isDac(one) && isDac(other)) || (one.startsWith("attenuation-") && other.startsWith("attenuation-"))
           || (one.startsWith("rf-power-row") && other == "rf-power-table");
}

} // namespace

TEST_F(KeptInstrument, TunesEachSettingAndNoOther)
{
    const auto settingsIn = [](const std::string& json) {
        return QJsonDocument::fromJson(QByteArray::fromStdString(json))["settings"].toArray();
    };
    const auto listAll = [&] { return settingsIn(console({"--state", state, "tune", "ls", "--json"}).output); };
    QJsonArray before = listAll();
    int changed = 0;
    for (qsizetype i = 0; i < before.size(); ++i) {
        const QJsonObject setting = before[i].toObject();
        if (setting["type"] == "read-only")
            continue;
        const QString name = setting["setting"].toString();
        const std::string shown = setting["module"].toString().toStdString() + " " + name.toStdString();
        const QString value = otherValue(setting);
        const QStringList set{"tune set", setting["module"].toString(), name, value};
        const Outcome run = shell(set.join(' ').toUtf8() + "\n--json tune ls\n", {"--state", state});
        EXPECT_EQ(run.errors, "") << shown;
        const QJsonArray after = settingsIn(run.output.substr(run.output.find('\n')));
        for (qsizetype j = 0; j < after.size(); ++j) {
            const QJsonObject other = after[j].toObject();
            if (j == i) {
                EXPECT_NE(other["value"], setting["value"]) << shown;
            } else if (other["module"] != setting["module"] || !moveTogether(name, other["setting"].toString())) {
                EXPECT_EQ(other["value"], before[j].toObject()["value"]) << shown;
            }
        }
        before = after;
        ++changed;
    }
    EXPECT_EQ(listAll(), before) << "the last one is kept too";
    EXPECT_GT(changed, 60);
}

TEST_F(KeptInstrument, TunesOneSettingAndSaysWhyNot)
{
    EXPECT_EQ(console({"--state", state, "tune", "set", "ulk-power", "rf-power", "0x07"}).output, "7\n");
    EXPECT_EQ(console({"--state", state, "tune", "get", "ulk-power", "rf-power"}).output, "7\n");
    EXPECT_EQ(
        console({"--state", state, "--json", "tune", "set", "wn0807-synthesis", "capacitor2-range", "3..2.5"}).json(),
        (QJsonObject{{"capacitor2-range", QJsonArray{3.0, 2.5}}}));
    EXPECT_EQ(console({"tune", "get", "wn0807-synthesis", "selected-rf-filter"}).output, "none\n");
    EXPECT_EQ(console({"--state", state, "tune", "reset", "ulk-power"}).output, "ulk-power is reset\n");
    EXPECT_EQ(console({"--state", state, "tune", "get", "ulk-power", "rf-power"}).output, "32\n");

    expectError({"--state", state, "tune", "set", "ulk-power", "rf-power", "99"}, 2,
                "'99' is no value for rf-power: use a whole number from 0 to 63");
    EXPECT_EQ(console({"--state", state, "tune", "get", "ulk-power", "rf-power"}).output, "32\n");
    expectError({"tune", "set", "yq-synthesis", "selected-if", "-1"}, 2, "use a whole number from 0 to 4");
    expectError({"tune", "set", "kz515-power", "signal-gain", "3"}, 2, "use one of 0, 6, 12, 18");
    expectError({"tune", "set", "ulk-power", "rf-power", "256"}, 2, "use a whole number from 0 to 255");
    expectError({"tune", "set", "ulk-power", "synt-power-mode", "2"}, 2, "use a whole number from 0 to 1");
    expectError({"tune", "set", "ulk-power", "discrete-attenuator", "yes"}, 2, "use on or off");
    expectError({"tune", "set", "wn0807-synthesis", "capacitor1-range", "3"}, 2, "written as FIRST..SECOND");
    expectError({"tune", "set", "ulk-power", "min-power-code", "1"}, 2, "can only be read");
    expectError({"tune", "get", "ulk-power", "nonsense"}, 2, "unknown setting 'nonsense'; there are lo-power");
    expectError({"tune", "reset", "wn0807-power"}, 2, "has no reset");
    expectError({"--missing", "ulk-power", "tune", "get", "ulk-power", "rf-power"}, 1, "has no ulk-power control");
}

TEST_F(KeptInstrument, LoadsTablesIntoModules)
{
    const QString file = write("table.bin", QByteArray("\0\1\377", 3));
    EXPECT_EQ(console({"--state", state, "tune", "load-table", "kz515-power", "receiver-correction", file}).output,
              "loaded 3 bytes into receiver-correction\n");
    EXPECT_TRUE(read(state).contains(QByteArray("\0\1\377", 3)));
    expectError({"tune", "load-table", "ulk-power", "nonsense", file}, 2,
                "unknown table 'nonsense'; there are lo-power-codes, rf-power-codes");
    expectError({"tune", "load-table", "yq-synthesis", "nonsense", file}, 2, "unknown table 'nonsense'");
    expectError({"tune", "load-table", "ulk-power", "lo-power-codes", folder.filePath("none")}, 1, "cannot be read");
}

TEST(ServiceConsole, CompletesWhatFits)
{
    const auto complete = [](const QStringList& words) { return console(QStringList{"__complete"} + words).output; };
    EXPECT_EQ(complete({"te"}), "temperature\nterms\n");
    EXPECT_EQ(complete({"tune", ""}), "get\nload-table\nls\nreset\nset\n");
    EXPECT_EQ(complete({"tune", "reset", ""}), "ulk-power\nulk-synthesis\n");
    EXPECT_EQ(complete({"tune", "get", "ulk-power", "min"}), "min-power-code\n");
    EXPECT_EQ(complete({"tune", "set", "ulk-power", "min"}), "") << "what can only be read";
    EXPECT_EQ(complete({"tune", "set", "ulk-power", "discrete-attenuator", ""}), "off\non\n");
    EXPECT_EQ(complete({"tune", "set", "nonsense", ""}), "");
    EXPECT_EQ(complete({"tune", "load-table", "ulk-power", "rf"}), "rf-power-codes\n");
    EXPECT_EQ(complete({"--json", "--missing", "lo-leakage", "probe", "yq"}), "yq-synthesis\n");
    EXPECT_EQ(complete({"--missing", "file"}), "file-memory\n");
    EXPECT_EQ(complete({"monitor", "--ex"}), "--exercise\n--expect\n");
    EXPECT_EQ(complete({"restore", "--only", "s"}), "serial-number\nsettings\n");
    EXPECT_EQ(complete({"diff", "a.json", ""}), "instrument\n");
    EXPECT_EQ(complete({"tune", "set", "yq-synthesis", "sel"}), "selected-if\n");
    EXPECT_THAT(complete({"tune", "get", "-"}), HasSubstr("--json\n")) << "arguments without a name are no options";
    EXPECT_THAT(complete({"pots", "set", "--"}), HasSubstr("--eeprom\n"));
    EXPECT_EQ(complete({"--provider=simul"}), "__files\n--provider=simulated\n");
    EXPECT_EQ(complete({"--missing=lo"}), "--missing=lo-leakage\n");
    EXPECT_EQ(complete({"--nonsense=lo"}), "");
    EXPECT_EQ(complete({"files", "put", ""}), "__files\n") << "which stands for files";
    EXPECT_EQ(complete({"help", "seri"}), "serial\n");
    EXPECT_EQ(complete({"help", "serial", ""}), "get\nset\n");
}

TEST_F(KeptInstrument, CompletesWhatOnlyTheInstrumentKnows)
{
    ASSERT_EQ(kept({"files", "put", write("a note", "x")}).status, 0);
    const auto complete = [&](const QStringList& words) {
        return console(QStringList{"__complete", "--state", state} + words).output;
    };
    EXPECT_EQ(complete({"files", "rm", ""}), "a note\n");
    EXPECT_EQ(complete({"pots", "get", ""}), "0\n1\n2\n3\n4\n5\n6\n7\n");
    EXPECT_EQ(complete({"corrections", "enable", "correction-1"}), "correction-1\ncorrection-10\n");
    EXPECT_EQ(complete({"--missing=file-memory", "files", "rm", ""}), "");
    const Outcome refused = console({"__complete", "--provider", "nobody", "files", "rm", ""});
    EXPECT_EQ(refused.status, 0);
    EXPECT_EQ(refused.output + refused.errors, "");
}

TEST(ServiceConsole, GuessesWhatWasMeant)
{
    expectError({"seral", "get"}, 2, "unknown command 'seral' after 'service-console'; did you mean 'serial'?");
    expectError({"serial", "gte"}, 2, "did you mean 'get'?");
    expectError({"--stat", "x", "serial", "get"}, 2, "unknown option '--stat'; did you mean '--state'?");
    expectError({"tune", "get", "--modle=3"}, 2, "unknown option '--modle'");
    expectError({"probe", "serail-number"}, 2, "unknown control 'serail-number'; did you mean 'serial-number'?");
    expectError({"tune", "ls", "ulk-powr"}, 2, "did you mean 'ulk-power'?");
    expectError({"tune", "get", "ulk-power", "rf-powr"}, 2, "did you mean 'rf-power'?");
    expectError({"tune", "load-table", "ulk-power", "rf-power-code", "x"}, 2, "did you mean 'rf-power-codes'?");
    expectError({"corrections", "enable", "corection-3"}, 2, "did you mean 'correction-3'?");
    expectError({"--provider", "simulatd", "info"}, 2, "there is no provider 'simulatd'; did you mean 'simulated'?");
}

TEST(ServiceConsole, ShowsInMessagesWhatFitsOnALine)
{
    expectError({"serial", "set", QString(5000, 'x')}, 2, "'" + std::string(59, 'x') + "…' is no value");
    expectError({"serial", "set", "1\n\x1b[2J"}, 2, "'1 \\x1B[2J' is no value");
}

TEST(ServiceConsole, HelpsWithACommandByItsName)
{
    EXPECT_EQ(console({"help"}).output, console({"--help"}).output);
    EXPECT_EQ(console({"help", "serial"}).output, console({"serial", "--help"}).output);
    EXPECT_EQ(console({"help", "serial", "set"}).output, console({"serial", "set", "--help"}).output);
    expectError({"help", "serail"}, 2, "unknown command 'serail' after 'service-console'; did you mean 'serial'?");
    expectError({"help", "serial", "nonsense"}, 2, "there are get, set");
    const std::string help = console({"serial", "set", "--help"}).output;
    EXPECT_THAT(help.substr(help.find("Global options:")), HasSubstr("--state FILE"));
}

TEST(ServiceConsole, DemoIsATourOfAllControls)
{
    const Outcome run = console({"demo"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.output, HasSubstr("takes its controls away"));
    EXPECT_THAT(run.output, HasSubstr("All 20 controls behaved."));
    EXPECT_THAT(run.output, Not(HasSubstr("FAILED")));
    const QJsonArray controls = console({"--json", "demo"}).json()["controls"].toArray();
    ASSERT_EQ(controls.size(), 20);
    for (const auto& control : controls) {
        EXPECT_EQ(control.toObject()["ok"], true);
        EXPECT_GE(control.toObject()["steps"].toInt(), 3);
    }
    expectError({"--missing", "ulk-power", "demo"}, 1, "has no ulk-power control");
    expectError({"--state", "kept", "demo"}, 2, "demo has an instrument of its own");
}

} // namespace tov::testing

#include <gmock/gmock.h>

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>

#include <algorithm>
#include <string>

namespace tov::testing {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

struct Outcome
{
    int status;
    std::string output;
    std::string errors;

    QJsonObject json() const { return QJsonDocument::fromJson(QByteArray::fromStdString(output)).object(); }
};

Outcome console(const QStringList& arguments)
{
    QProcess process;
    process.start(SERVICE_CONSOLE, arguments);
    EXPECT_TRUE(process.waitForFinished(-1)) << process.errorString().toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {process.exitCode(), process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
}

// One line that begins with the program's name, and nothing on standard output.
void expectError(const QStringList& arguments, int status, const std::string& says)
{
    const Outcome run = console(arguments);
    const std::string shown = arguments.join(' ').toStdString();
    EXPECT_EQ(run.status, status) << shown;
    EXPECT_THAT(run.output, IsEmpty()) << shown;
    EXPECT_THAT(run.errors, StartsWith("service-console: ")) << shown;
    EXPECT_THAT(run.errors, HasSubstr(says)) << shown;
    EXPECT_EQ(std::ranges::count(run.errors, '\n'), 1) << shown << "\n" << run.errors;
}

} // namespace

TEST(ServiceConsole, HelpsAtEveryLevel)
{
    const QStringList levels[] = {
        {},     {"info"},      {"probe"},     {"lo-leakage"}, {"lo-leakage", "get"}, {"lo-leakage", "set"},
        {"yq"}, {"yq", "get"}, {"yq", "set"}, {"demo"}};
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
    ASSERT_EQ(controls.size(), 2);
    EXPECT_EQ(controls[0].toObject(), (QJsonObject{{"control", "lo-leakage"},
                                                   {"registry-key", "0x39CE7F28FB8C58BD"},
                                                   {"sdk-key", "0x33F09CC532B7707A"},
                                                   {"state", "present"}}));
    EXPECT_EQ(controls[1].toObject()["state"].toString(), "missing");
}

TEST(ServiceConsole, ProbeAnswersByItsExitStatus)
{
    EXPECT_EQ(console({"probe", "lo-leakage"}).status, 0);
    EXPECT_EQ(console({"--missing", "lo-leakage", "probe", "yq-synthesis"}).status, 0);

    const Outcome missing = console({"--missing", "lo-leakage", "--json", "probe", "lo-leakage"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.json(), (QJsonObject{{"control", "lo-leakage"}, {"present", false}}));

    expectError({"probe", "nonsense"}, 2, "unknown control 'nonsense'; there are lo-leakage, yq-synthesis");
    expectError({"probe"}, 2, "required");
    expectError({"probe", "lo-leakage", "yq-synthesis"}, 2, "unexpected 'yq-synthesis'");
}

TEST(ServiceConsole, ShowsAndChangesSettings)
{
    EXPECT_EQ(console({"lo-leakage", "get", "--json"}).json(), (QJsonObject{{"lo-leakage", false}}));
    EXPECT_EQ(console({"lo-leakage", "set", "on", "--json"}).json(), (QJsonObject{{"lo-leakage", true}}));
    EXPECT_EQ(console({"yq", "set", "manual-if", "on", "--json"}).json(), (QJsonObject{{"manual-if", true}}));
    EXPECT_EQ(console({"yq", "set", "selected-if", "2", "--json"}).json(), (QJsonObject{{"selected-if", 2}}));
    EXPECT_EQ(console({"yq", "get", "selected-if", "--json"}).json(), (QJsonObject{{"selected-if", 0}}));
    EXPECT_EQ(console({"--json", "yq", "get"}).json(),
              (QJsonObject{{"manual-if", false},
                           {"selected-if", 0},
                           {"supported-ifs", QJsonArray{2.5e6, 5e6, 7.5e6, 10.7e6, 21.4e6}}}));
    EXPECT_EQ(console({"yq", "get"}).output, "setting        value\n"
                                             "manual-if      off\n"
                                             "selected-if    0\n"
                                             "supported-ifs  2500000 5000000 7500000 10700000 21400000\n");
}

TEST(ServiceConsole, RefusesMalformedValues)
{
    expectError({"lo-leakage", "set", "maybe"}, 2, "'maybe' is no value for lo-leakage: use on|off");
    expectError({"lo-leakage", "set", ""}, 2, "'' is no value");
    expectError({"lo-leakage", "set"}, 2, "required");
    for (const char* malformed : {"two", "2x", "1.5", "99999999999", " 2", "+2"})
        expectError({"yq", "set", "selected-if", malformed}, 2, "use a whole number");
    expectError({"yq", "set", "supported-ifs", "1"}, 2, "supported-ifs can only be read");
    expectError({"yq", "set", "nonsense", "1"}, 2, "unknown setting 'nonsense'; there are manual-if");
    expectError({"yq", "get", "nonsense"}, 2, "unknown setting");
    expectError({"--missing", "nonsense", "info"}, 2, "unknown control 'nonsense'");
}

TEST(ServiceConsole, RefusesUnknownAndIncompleteCommands)
{
    expectError({}, 2, "a command is missing");
    expectError({"yq"}, 2, "a command is missing after 'service-console yq'; there are get, set");
    expectError({"nonsense"}, 2, "unknown command 'nonsense'");
    expectError({"yq", "nonsense"}, 2, "unknown command 'nonsense' after 'service-console yq'");
    expectError({"info", "demo"}, 2, "unexpected 'demo'");
    expectError({"info", "--nonsense"}, 2, "unexpected '--nonsense'");
}

TEST(ServiceConsole, FailsWhenTheInstrumentDoesNotDoIt)
{
    expectError({"yq", "set", "selected-if", "-1"}, 1, "did not take -1 for selected-if and holds 0");
    expectError({"yq", "set", "selected-if", "99"}, 1, "did not take 99 for selected-if and holds 0");
    expectError({"--missing", "lo-leakage", "lo-leakage", "set", "on"}, 1, "has no lo-leakage control");
    expectError({"--missing", "yq-synthesis", "yq", "get"}, 1, "has no yq-synthesis control");
}

#ifdef Q_OS_LINUX
TEST(ServiceConsole, FailsWhenItsAnswerDoesNotGetOut)
{
    for (const QStringList& arguments : {QStringList{"info"}, QStringList{"--help"}}) {
        QProcess process;
        process.setStandardOutputFile("/dev/full");
        process.start(SERVICE_CONSOLE, arguments);
        ASSERT_TRUE(process.waitForFinished(-1));
        EXPECT_EQ(process.exitCode(), 3);
        EXPECT_THAT(process.readAllStandardError().toStdString(), HasSubstr("cannot write to standard output"));
    }
}
#endif

TEST(ServiceConsole, DemoShowsThatEverythingStillWorksAfterARelease)
{
    const Outcome run = console({"demo"});
    EXPECT_EQ(run.status, 0) << run.output;
    EXPECT_THAT(run.output, HasSubstr("takes its controls away"));
    EXPECT_THAT(run.output, HasSubstr("All "));
    EXPECT_THAT(run.output, Not(HasSubstr("FAILED")));

    const QJsonObject json = console({"demo", "--json"}).json();
    EXPECT_EQ(json["failures"].toInt(-1), 0);
    EXPECT_GT(json["steps"].toArray().size(), 10);

    expectError({"--missing", "lo-leakage", "demo", "--json"}, 1, "has no lo-leakage control");
}

} // namespace tov::testing

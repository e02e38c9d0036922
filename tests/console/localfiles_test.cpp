#include "console/consoleprogram.h"
#include "console/scratchfolder.h"

#include <QDir>
#include <QJsonArray>

namespace tov::testing {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

class LocalFiles : public ScratchFolder
{
protected:
    Outcome kept(const QStringList& arguments) { return console(QStringList{"--state", state} + arguments); }
};

} // namespace

TEST_F(LocalFiles, AreReplacedOnlyWhenThatIsForced)
{
    ASSERT_EQ(kept({"files", "put", write("local", "new")}).status, 0);
    const QString target = write("target", "old");
    for (const QStringList& command : {QStringList{"files", "get", "local"}, {"memory", "dump"}, {"ifsw", "plan"}}) {
        expectError(QStringList{"--state", state} + command + QStringList{target}, 1, "is there already");
        EXPECT_EQ(read(target), "old");
    }
    EXPECT_EQ(kept({"files", "get", "local", target, "--force"}).status, 0);
    EXPECT_EQ(read(target), "new");
    EXPECT_THAT(QDir(folder.path()).entryList(QDir::Files), ::testing::SizeIs(3)) << "nothing is left beside them";
}

TEST_F(LocalFiles, AreStandardInputAndOutputToo)
{
    QProcess put;
    start(put, {"--state", state, "files", "put", "-", "note"});
    put.write("first\r\nsecond\n");
    put.closeWriteChannel();
    EXPECT_EQ(finish(put).status, 0);

    QProcess get;
    start(get, {"--state", state, "files", "get", "note", "-"});
    ASSERT_TRUE(get.waitForFinished(-1));
    EXPECT_EQ(get.readAllStandardOutput(), "first\r\nsecond\n");
    expectError({"files", "put", "-"}, 2, "standard input has no name");
    EXPECT_THAT(console({"ifsw", "plan", "-"}).output, StartsWith("start,stop,points\n"));
}

TEST_F(LocalFiles, ReplaceNoneOfTheInstrumentsUnasked)
{
    const QString first = write("first", "1");
    ASSERT_EQ(kept({"files", "put", first, "name"}).status, 0);
    expectError({"--state", state, "files", "put", write("second", "2"), "name"}, 2,
                "--yes is needed to replace 'name'");
    EXPECT_EQ(kept({"files", "get", "name", "-"}).output, "1");
    EXPECT_EQ(kept({"--yes", "files", "put", write("second", "2"), "name"}).status, 0);
    EXPECT_EQ(kept({"files", "get", "name", "-"}).output, "2");
}

#ifdef Q_OS_LINUX

namespace {

// With words that QProcess cannot pass on: any bytes, which stand as \377 in `script`.
Outcome shellScript(const QString& script)
{
    QProcess process;
    process.setProcessEnvironment(environmentOfTests());
    process.start("bash", {"-c", script});
    return finish(process);
}

// What the program does at a terminal at which `typed` is typed.
Outcome atTerminal(const QStringList& arguments, const QByteArray& typed)
{
    QProcess process;
    process.setProcessEnvironment(environmentOfTests());
    process.start("script", {"--quiet", "--return", "--command", QString(SERVICE_CONSOLE) + " " + arguments.join(' '),
                             "/dev/null"});
    process.write(typed);
    process.closeWriteChannel();
    return finish(process);
}

} // namespace

TEST_F(LocalFiles, HaveNamesOfAnyBytes)
{
    write("contents", "x");
    const Outcome run =
        shellScript(QString("cd '%1' && console='%2 --state state'\n"
                            "cp contents $'\\377 1' && cp contents $'\\376 1'\n"
                            "$console files put $'\\377 1' one && $console files put $'\\376 1' two\n"
                            "$console files get one $'\\375' && cmp contents $'\\375'\n"
                            "$console files put $'\\377 1'; echo $?; $console files get $'\\377' -; echo $?\n"
                            "$console --state $'\\376' serial get; echo $?\n"
                            "rm $'\\377 1' $'\\376 1' $'\\375'") // which Qt cannot name
                        .arg(folder.path(), SERVICE_CONSOLE));
    EXPECT_EQ(run.output, "one: 1 bytes written\ntwo: 1 bytes written\none: 1 bytes read\n2\n2\n2\n");
    EXPECT_THAT(run.errors, HasSubstr("'\\xFF 1' is no name on the instrument: it is not UTF-8"));
}

TEST_F(LocalFiles, AreAskedForWhereNothingCanBeUndone)
{
    ASSERT_EQ(kept({"--yes", "serial", "set", "1"}).status, 0);
    EXPECT_THAT(atTerminal({"--state", state, "serial", "set", "2"}, "n\n").output,
                HasSubstr("write the serial number 2? [y/N]"));
    EXPECT_EQ(kept({"serial", "get"}).output, "1\n");
    const Outcome refused = atTerminal({"--state", state, "memory", "erase"}, "\n");
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.output, HasSubstr("nothing was changed"));
    EXPECT_EQ(atTerminal({"--state", state, "serial", "set", "2"}, "y\n").status, 0);
    EXPECT_EQ(kept({"serial", "get"}).output, "2\n");
}

#endif

TEST(ServiceConsole, AsksForYesWhereNobodyCanBeAsked)
{
    for (const QStringList& command :
         {QStringList{"memory", "erase"}, {"serial", "set", "2"}, {"usb", "set", "1", "2", "3"}})
        expectError(command, 2, "--yes is needed");
}

TEST(ServiceConsole, GivesErrorsInJson)
{
    const auto errorOf = [](const QStringList& arguments) {
        const Outcome run = console(arguments);
        EXPECT_THAT(run.output, IsEmpty());
        return QJsonDocument::fromJson(QByteArray::fromStdString(run.errors))["error"].toObject();
    };
    const QJsonObject unknown = errorOf({"nonsense", "--json"});
    EXPECT_EQ(unknown["status"], 2);
    EXPECT_THAT(unknown["message"].toString().toStdString(), StartsWith("unknown command 'nonsense'"));
    EXPECT_EQ(errorOf({"--json", "--missing", "lo-leakage", "tune", "get", "lo-leakage", "lo-leakage"})["status"], 1);
}

TEST(ServiceConsole, ShowsTheColumnsAndRowsThatAreAskedFor)
{
    EXPECT_EQ(console({"pots", "ls", "--columns", "EEPROM,name", "--filter", "tune"}).output,
              "EEPROM  name\n512     Reference tune\n");
    EXPECT_EQ(console({"pots", "ls", "--columns", "name", "--filter", "tune", "--json"}).json()["potentiometers"],
              (QJsonArray{QJsonObject{{"name", "Reference tune"}}}));
    EXPECT_THAT(console({"info", "--color", "always", "--columns", "state"}).output,
                HasSubstr("\x1b[32mpresent\x1b[0m"));
    expectError({"info", "--color", "sometimes"}, 2, "'sometimes' is no value for --color");
    expectError({"info", "--columns", "nothing"}, 2, "unknown column 'nothing'");
}

} // namespace tov::testing

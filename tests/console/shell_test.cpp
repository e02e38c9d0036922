#include "console/consoleprogram.h"
#include "console/terminal/history.h"
#include "console/terminal/shellwords.h"
#include "tools/text/suggestions.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>

namespace tov::testing {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

} // namespace

TEST(ShellWords, AreQuotedAsInOtherShells)
{
    using console::wordsOf;

    EXPECT_THAT(wordsOf(" files  put\t'a \"b' \r"), ElementsAre("files", "put", "a \"b"));
    EXPECT_THAT(wordsOf(R"(a\ b "c\"d\e\\" 'f\' g"h"'i' "")"), ElementsAre("a b", R"(c"d\e\)", R"(f\)", "ghi", ""));
    EXPECT_THAT(wordsOf("serial get # the number"), ElementsAre("serial", "get"));
    EXPECT_THAT(wordsOf("a#b '# c' \\#"), ElementsAre("a#b", "# c", "#"));
    EXPECT_THAT(wordsOf("# nothing 'else"), IsEmpty());
    EXPECT_THROW(wordsOf("it's"), tools::BadUse);
    EXPECT_THROW(wordsOf("\"it's"), tools::BadUse);
    for (const std::string word : {"", "a b", "it's", "\"", "\\", "#1", "a\tb"})
        EXPECT_THAT(wordsOf(console::asOneWord(word)), ElementsAre(word));
}

TEST(ShellWords, GoOnWhileALineIsTyped)
{
    EXPECT_THAT(console::wordsBegun("files pu"), ElementsAre("files", "pu"));
    EXPECT_THAT(console::wordsBegun("files "), ElementsAre("files", ""));
    EXPECT_THAT(console::wordsBegun("files get \"a b"), ElementsAre("files", "get", "a b"));
}

TEST(Suggestions, AreWhatIsOneSlipAwayOrAFewInALongWord)
{
    const std::vector<std::string> known{"serial", "terms", "temperature", "ls"};
    EXPECT_EQ(tools::closest("serail", known), "serial");
    EXPECT_EQ(tools::closest("SERIAL", known), "serial");
    EXPECT_EQ(tools::closest("tempurture", known), "temperature");
    EXPECT_EQ(tools::closest("lss", known), "ls");
    EXPECT_EQ(tools::closest("l", known), "");
    EXPECT_EQ(tools::closest("nonsense", known), "");
    EXPECT_EQ(tools::closest(std::string(100'000, 'x'), known), "");
}

namespace {

class ShellHistory : public ::testing::Test
{
protected:
    QTemporaryDir folder;
    const QString file = folder.filePath("state/history");
    const console::History history{file};
};

} // namespace

TEST_F(ShellHistory, IsTheUsersAlone)
{
    EXPECT_THAT(history.lines(), IsEmpty());
    history.add("serial get");
    history.add("");
    history.add(" not this one");
    console::History(file).add("serial set 5");
    EXPECT_THAT(history.lines(), ElementsAre("serial get", "serial set 5"));
#ifdef Q_OS_UNIX
    constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    EXPECT_FALSE(QFileInfo(file).permissions() & others);
    EXPECT_FALSE(QFileInfo(folder.filePath("state")).permissions() & others);
#endif
}

TEST_F(ShellHistory, KeepsTheLastLines)
{
    history.add("first");
    QFile contents(file);
    ASSERT_TRUE(contents.open(QIODevice::Append));
    for (int i = 0; i < 2000; ++i)
        contents.write("line " + QByteArray::number(i) + "\n");
    contents.close();
    const auto lines = history.lines();
    ASSERT_EQ(lines.size(), 1000);
    EXPECT_EQ(lines.front(), "line 1000");
    EXPECT_EQ(history.lines(), lines);
    EXPECT_LE(QFileInfo(file).size(), 10'000);
}

TEST_F(ShellHistory, IsLeftOutWhereItCannotBeKept)
{
    const console::History nowhere(folder.path());
    nowhere.add("serial get");
    EXPECT_THAT(nowhere.lines(), IsEmpty());
}

TEST(Shell, UsesOneInstrumentCommandByCommand)
{
    const QTemporaryDir folder;
    const QString state = folder.filePath("state");
    const Outcome run =
        shell("# a script\n\nserial set 5 --yes\n--json serial get\nserial get\nexit\nserial set 6 --yes\n",
              {"--state", state});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output, "5\n{\"command\":2,\"serial-number\":5}\n5\n");
    EXPECT_EQ(console({"--state", state, "serial", "get"}).output, "5\n");
}

TEST(Shell, PrintsNotificationsWhileSettingsChange)
{
    EXPECT_EQ(withoutTimes(shell("notify on\ntune set ulk-power rf-power 7\ncorrections enable 3\nnotify off\n"
                                 "tune set ulk-power rf-power 8\n")
                               .output,
                           3),
              "ulk-power rf-power-changed\n7\nfactory-corrections enabled 3\nfactory-corrections states\n"
              "correction-3 is enabled\n8\n");
    EXPECT_EQ(withoutTimes(shell("notify on\nwait 10\n").output, 1), "temperature changed\n");
}

TEST(Shell, GivesItsHelpInJsonAndKeepsItsInputToItself)
{
    const Outcome run = shell("help\nserial --help\nfiles put - x\nfiles ls\n", {"--json"});
    const QList<QByteArray> lines = QByteArray::fromStdString(run.output).trimmed().split('\n');
    ASSERT_EQ(lines.size(), 3) << run.output;
    for (const int line : {0, 1})
        EXPECT_THAT(QJsonDocument::fromJson(lines[line])["text"].toString().toStdString(), HasSubstr("Usage: "));
    EXPECT_EQ(lines[2], R"({"command":4,"files":[]})");
    EXPECT_THAT(run.errors, HasSubstr("- is what the shell itself reads and writes"));
}

TEST(Shell, TakesControlsAwayAndOffersThem)
{
    const Outcome run = shell("serial get\nrelease\nserial get\noffer\nserial set 9 --yes\nserial get\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "100001\n9\n9\n");
    EXPECT_THAT(run.errors, HasSubstr("has no serial-number control"));

    const Outcome changes = shell("tune set ulk-power rf-power 5\nrelease\ntune set ulk-power rf-power 0\n"
                                  "tune reset ulk-power\ntune get ulk-power rf-power\noffer\n"
                                  "tune get ulk-power rf-power\n");
    EXPECT_EQ(changes.output, "5\n5\n");
    EXPECT_EQ(std::ranges::count(changes.errors, '\n'), 3) << changes.errors;
}

TEST(Shell, GoesOnAfterAFailureAndEndsAsTheFirstOne)
{
    const Outcome run = shell("serial get\nprobe nonsense\n\n--missing x info\nrelease\nserial get\nserial 'get\n");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.output, "100001\n");
    EXPECT_THAT(run.errors, StartsWith("service-console: line 2: unknown control 'nonsense'"));
    EXPECT_THAT(run.errors, HasSubstr("\nservice-console: line 4: unknown option '--missing'"));
    EXPECT_THAT(run.errors, HasSubstr("\nservice-console: line 6: this instrument has no serial-number control"));
    EXPECT_THAT(run.errors, HasSubstr("\nservice-console: line 7: the quote ' is not closed\n"));
    EXPECT_EQ(shell("demo\n").status, 2) << "has an instrument of its own";
    EXPECT_EQ(shell("release\nserial get\nnonsense\nexit\n").status, 1);
    EXPECT_EQ(shell("serial get").status, 0);
}

TEST(Shell, EndsAtTheFirstFailureWhereThatIsWanted)
{
    const Outcome run =
        shell("serial get\nprobe nonsense\nserial set 5 --yes\n", {}, environmentOfTests(), {"--stop-on-error"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.output, "100001\n");
    EXPECT_EQ(std::ranges::count(run.errors, '\n'), 1) << run.errors;
}

TEST(Shell, AnswersInJsonWithALineForEachCommand)
{
    const Outcome run =
        shell("# numbers\nserial get\nnonsense\nnotify on\nserial set 7 --yes\ntune ls lo-leakage\n", {"--json"});
    QByteArrayList lines = QByteArray::fromStdString(run.output).split('\n');
    ASSERT_EQ(lines.size(), 6) << run.output;
    std::vector<int> commands;
    for (const QByteArray& line : lines.first(5))
        commands.push_back(QJsonDocument::fromJson(line)["command"].toInt());
    EXPECT_THAT(commands, ElementsAre(1, 3, 0, 4, 5)) << "one is a notification";
    EXPECT_EQ(QJsonDocument::fromJson(lines[2])["notification"].toString(), "event");
    EXPECT_EQ(QJsonDocument::fromJson(lines[3])["serial-number"].toInt(), 7);
}

TEST(Shell, HelpsWithItsOwnCommandsToo)
{
    const std::string help = shell("help\n").output;
    for (const char* command : {"\n  serial ", "\n  notify ", "\n  wait ", "\n  exit "})
        EXPECT_THAT(help, HasSubstr(command));
    EXPECT_THAT(help, Not(HasSubstr("\n  demo ")));
    EXPECT_THAT(shell("help notify\n").output, HasSubstr("Usage: service-console notify"));
    EXPECT_EQ(shell("help serial set\n").output, shell("serial set --help\n").output);
    EXPECT_THAT(console({"shell", "--help"}).output, HasSubstr("\n  notify on|off "));
    EXPECT_EQ(shell("help nonsense\n").status, 2);
    EXPECT_EQ(shell("notify maybe\n").status, 2);
    EXPECT_EQ(shell("wait\nwait 1\n").status, 0);
}

} // namespace tov::testing

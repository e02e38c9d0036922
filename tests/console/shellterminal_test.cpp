#ifdef __linux__

#include "console/consoleprogram.h"
#include "console/terminal/history.h"

#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace tov::testing {

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr auto prompt = "service-console> ";

/// A shell on a terminal of its own, at which the test sits.
class ShellOnATerminal : public ::testing::Test
{
protected:
    void begin(const QStringList& arguments = {})
    {
        m_terminal = posix_openpt(O_RDWR | O_NOCTTY);
        ASSERT_EQ(grantpt(m_terminal), 0);
        ASSERT_EQ(unlockpt(m_terminal), 0);
        const std::string name = ptsname(m_terminal);
        auto environment = environmentOfTests();
        environment.insert("XDG_STATE_HOME", folder.path());
        environment.insert("TERM", "xterm");
        m_process.setProcessEnvironment(environment);
        m_process.setChildProcessModifier([name] {
            std::signal(SIGINT, SIG_DFL); // whoever runs the tests may ignore it
            setsid();
            const int slave = open(name.c_str(), O_RDWR);
            ioctl(slave, TIOCSCTTY, 0);
            for (const int standard : {0, 1, 2})
                dup2(slave, standard);
        });
        start(m_process, QStringList{"shell"} + arguments);
        waitFor(prompt);
    }

    ~ShellOnATerminal() override
    {
        if (m_terminal >= 0)
            close(m_terminal);
        m_process.waitForFinished(-1);
    }

    void type(const std::string& keys) const
    {
        ASSERT_EQ(write(m_terminal, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    }

    // What the shell prints until it has printed this.
    std::string waitFor(const std::string& expected)
    {
        std::size_t end = 0;
        std::array<char, 4096> part{};
        while ((end = m_shown.find(expected)) == std::string::npos) {
            const ssize_t count = read(m_terminal, part.data(), part.size());
            if (count <= 0) {
                ADD_FAILURE() << "instead of '" << expected << "' it ended with '" << m_shown << "'";
                return {};
            }
            m_shown.append(part.data(), static_cast<std::size_t>(count));
        }
        const std::string shown = m_shown.substr(0, end + expected.size());
        m_shown.erase(0, shown.size());
        return shown;
    }

    // A line, and what is shown until the prompt comes again.
    std::string answerTo(const std::string& line)
    {
        type(line + "\n");
        waitFor("\n"); // of the line itself
        return waitFor(prompt);
    }

    int end()
    {
        type("exit\n");
        m_process.waitForFinished(-1);
        return m_process.exitCode();
    }

    QTemporaryDir folder;

private:
    QProcess m_process;
    int m_terminal = -1;
    std::string m_shown; // and not waited for yet
};

} // namespace

TEST_F(ShellOnATerminal, GoesOnAfterCtrlC)
{
    begin();
    type("nonsense");
    waitFor("nonsense");
    type("\x03");
    waitFor("^C");
    waitFor(prompt);
    EXPECT_THAT(answerTo("serial get"), HasSubstr("100001"));
    type("monitor\n");
    waitFor("Ctrl-C ends");
    type("\x03");
    waitFor(prompt);
    EXPECT_THAT(answerTo("serial get"), HasSubstr("100001"));
    EXPECT_EQ(end(), 0);
}

TEST_F(ShellOnATerminal, TakesLettersOfAnyScriptAndGivesUpAQuestion)
{
    begin();
    EXPECT_THAT(answerTo("files get Größe-周 x"), HasSubstr("'Größe-周'"));
    type("memory erase\n");
    waitFor("[y/N] ");
    type("\x03");
    EXPECT_THAT(waitFor(prompt), HasSubstr("nothing was changed"));
    EXPECT_EQ(end(), 0);
}

TEST_F(ShellOnATerminal, EndsWellHoweverItsCommandsDid)
{
    begin();
    const std::string answer = answerTo("probe nonsense");
    EXPECT_THAT(answer, HasSubstr("service-console: unknown control 'nonsense'")) << "without a line's number";
    EXPECT_EQ(end(), 0);
}

TEST_F(ShellOnATerminal, CallsBackTheLinesOfShellsBefore)
{
    const console::History history(folder.path() + "/service-console/history");
    history.add("serial get");
    begin();
    type("\x10\n"); // the line before
    EXPECT_THAT(waitFor("100001"), HasSubstr("serial get"));
    waitFor(prompt);
    EXPECT_EQ(end(), 0);
    EXPECT_THAT(history.lines(), ::testing::ElementsAre("serial get", "serial get", "exit"));
}

TEST_F(ShellOnATerminal, KeepsNoLinesWhereThatIsUnwanted)
{
    begin({"--no-history"});
    EXPECT_EQ(end(), 0);
    EXPECT_FALSE(QFile::exists(folder.path() + "/service-console"));
}

TEST_F(ShellOnATerminal, CompletesWords)
{
    begin();
    type("seri\tge\t\n");
    EXPECT_THAT(waitFor("100001"), Not(HasSubstr("unknown")));
    waitFor(prompt);
    EXPECT_EQ(end(), 0);
}

} // namespace tov::testing

#endif

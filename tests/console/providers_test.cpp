#include "console/consoleprogram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#ifdef Q_OS_UNIX
#include <csignal>
#endif

namespace tov::testing {

namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

const QDir pluginsOfTests(PROVIDERS_OF_TESTS);
const QString suffix = QString(".") + QFileInfo(OWN_PROVIDER).suffix();

/// A folder with plug-ins, and runs that know of it.
class ServiceConsoleProviders : public ::testing::Test
{
protected:
    // Puts a plug-in of the tests there.
    QString put(const QString& name) const { return put(name, pluginsOfTests.filePath(name + suffix)); }

    QString put(const QString& name, const QString& plugin) const
    {
        const QString file = folder.filePath(name + suffix);
        EXPECT_TRUE(QFile::copy(plugin, file)) << plugin.toStdString();
        return file;
    }

    Outcome run(const QStringList& arguments, const QString& workingFolder = {}) const
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(workingFolder);
        start(process, arguments);
        return finish(process);
    }

    void expectNotOpened(int status, const QString& provider, const std::string& says) const
    {
        const Outcome refused = run({"--provider", provider, "info"});
        EXPECT_EQ(refused.status, status) << provider.toStdString();
        EXPECT_THAT(refused.output, IsEmpty());
        EXPECT_EQ(refused.errors, "service-console: " + says + "\n");
    }

    static QProcessEnvironment with(const QString& name, const QString& value)
    {
        auto environment = environmentOfTests();
        environment.insert(name, value);
        return environment;
    }

    QTemporaryDir folder;
    QProcessEnvironment environment = with("DEVICESSERVICE_PROVIDER_PATH", folder.path());
};

} // namespace

TEST_F(ServiceConsoleProviders, AreListedWithTheirOptionsAndWhereWasLooked)
{
    put("own-provider");
    const Outcome listed = run({"providers"});
    EXPECT_EQ(listed.status, 0);
    EXPECT_THAT(listed.output, AllOf(StartsWith("own 1.0  The smallest provider"), HasSubstr("\nsimulated "),
                                     HasSubstr("\nenabled "), HasSubstr("  65536      Size of the memory"),
                                     HasSubstr("looked in: " + folder.path().toStdString())));

    const QJsonArray providers = run({"--json", "providers"}).json()["providers"].toArray();
    ASSERT_EQ(providers.size(), 2);
    EXPECT_EQ(providers[0]["name"], "own");
    EXPECT_EQ(providers[0]["version"], "1.0");
    EXPECT_EQ(providers[1]["options"][2]["option"], "missing");
}

TEST_F(ServiceConsoleProviders, AreRefusedWithTheReason)
{
    put("othertrade");
    put("otherversion");
    put("nameless");
    put("own-provider");
    put("second", pluginsOfTests.filePath("own-provider" + suffix));
    QFile text(folder.filePath("text" + suffix));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("not a library");
    text.close();
    ASSERT_TRUE(QFile::copy(text.fileName(), folder.filePath("text.txt")));

    {
        QFile newer(put("newer", pluginsOfTests.filePath("awkwardprovider" + suffix)));
        ASSERT_TRUE(newer.open(QIODevice::ReadWrite));
        QByteArray bytes = newer.readAll();
        // Where a plug-in says which Qt it was built with: behind this mark and the version of the format.
        const QByteArray mark = suffix == ".so" ? QByteArray("qt-project!\0", 12) : QByteArray("QTMETADATA !");
        const qsizetype qt = bytes.indexOf(mark) + mark.size() + 1;
        ASSERT_EQ(bytes[qt], QT_VERSION_MAJOR);
        ASSERT_EQ(bytes[qt + 1], QT_VERSION_MINOR);
        bytes[qt + 1] = 99;
        newer.seek(0);
        newer.write(bytes);
    }

    const Outcome listed = run({"providers"});
    EXPECT_EQ(listed.status, 0);
    EXPECT_THAT(listed.output, HasSubstr("uses incompatible Qt library. (6.99"));
    const auto refusal = [](const char* name, const char* why) {
        return HasSubstr(name + suffix.toStdString() + ": " + why);
    };
    EXPECT_THAT(listed.output, refusal("othertrade", "it is a plug-in for something else ('org.example.paint')"));
    EXPECT_THAT(listed.output, refusal("otherversion", "it is made for version 0 of the interface, this program for "
                                                       "version 1"));
    EXPECT_THAT(listed.output, refusal("nameless", "it does not say its name"));
    EXPECT_THAT(listed.output, refusal("second", "another provider 'own' was found before"));
    EXPECT_THAT(listed.output, HasSubstr("refused: " + text.fileName().toStdString() + ": "));
    EXPECT_THAT(listed.output, Not(HasSubstr("text.txt")));
    EXPECT_EQ(run({"--json", "providers"}).json()["refused"].toArray().size(), 6);
}

TEST_F(ServiceConsoleProviders, OpenTheInstrumentThatIsNamed)
{
    const QString file = put("own-provider");
    for (const QString& provider : {QString("own"), file}) {
        EXPECT_THAT(run({"--provider", provider, "info"}).output,
                    AllOf(HasSubstr("Provider         own 1.0\n"), HasSubstr("Instrument       own\n")));
        EXPECT_EQ(run({"--provider", provider + ":enabled=true", "tune", "get", "lo-leakage", "lo-leakage"}).output,
                  "on\n");
        EXPECT_EQ(run({"--provider", provider, "tune", "get", "lo-leakage", "lo-leakage"}).output, "off\n");
        EXPECT_EQ(run({"--provider", provider, "probe", "temperature"}).status, 1);
    }
    environment.insert("DEVICESSERVICE_PROVIDER", "own:enabled=true,instrument=desk");
    EXPECT_EQ(run({"tune", "get", "lo-leakage", "lo-leakage"}).output, "on\n");
    EXPECT_THAT(run({"--provider", "simulated", "info"}).output, HasSubstr("Instrument       simulated\n"));
}

TEST_F(ServiceConsoleProviders, ChooseTheInstrumentByItsId)
{
    put("awkwardprovider");
    EXPECT_EQ(run({"--provider", "awkward", "instruments"}).output, "id     model     serial-number  description\n"
                                                                    "left   bare      1              On the left\n"
                                                                    "right  bare too  2              On the right\n");
    EXPECT_THAT(run({"--provider", "awkward", "info"}).output, HasSubstr("Instrument       bare\n"));
    EXPECT_THAT(run({"--provider", "awkward:instrument=right", "info"}).output,
                HasSubstr("Instrument       bare too\n"));
}

TEST_F(ServiceConsoleProviders, AreSearchedByWholePathsOnly)
{
    put("own-provider");
    environment.insert("DEVICESSERVICE_PROVIDER_PATH", ".");
    const Outcome unknown = run({"--provider", "own", "info"}, folder.path());
    EXPECT_EQ(unknown.status, 2);
    EXPECT_EQ(unknown.errors, "service-console: there is no provider 'own'; there is simulated\n");
    EXPECT_EQ(run({"--provider", "./own-provider" + suffix, "info"}, folder.path()).status, 0);
}

TEST_F(ServiceConsoleProviders, SayWhatIsWrongWithHowTheyAreAskedFor)
{
    expectNotOpened(2, "simulated:colour=red", "the provider 'simulated' has no option 'colour'");
    expectNotOpened(2, "simulated:seed=red",
                    "'red' is no value of the option 'seed', which is a whole number, not below 0");
    expectNotOpened(2, "simulated:seed", "'seed' is no option; one is NAME=VALUE");
    expectNotOpened(2, "simulated:answers=soon",
                    "'soon' is no value of the option 'answers', which is one of at-once, later");
    expectNotOpened(2, folder.path(), "there is no file '" + folder.path().toStdString() + "'");
    ASSERT_TRUE(QFile::copy(pluginsOfTests.filePath("own-provider" + suffix), folder.filePath("own.txt")));
    const std::string renamed = folder.filePath("own.txt").toStdString();
    expectNotOpened(2, QString::fromStdString(renamed),
                    "'" + renamed + "' is no provider for this program: its name does not end in '"
                        + suffix.toStdString() + "'");
    expectNotOpened(2, "./none" + suffix, "there is no file './none" + suffix.toStdString() + "'");
    put("own-provider");
    expectNotOpened(2, "own:enabled=yes", "'yes' is no value of the option 'enabled', which is 'true' or 'false'");
    const Outcome kept = run({"--provider", "own", "--state", "file", "info"});
    EXPECT_EQ(kept.status, 2);
    EXPECT_EQ(kept.errors, "service-console: the provider 'own' has no option 'state'\n");
}

TEST_F(ServiceConsoleProviders, FailInWholeSentences)
{
    put("awkwardprovider");
    expectNotOpened(1, "awkward:loud=false,manner=unreachable", "nobody answers at left");
    expectNotOpened(1, "awkward:loud=false,manner=throws", "the provider 'awkward' failed: out of order");
    expectNotOpened(1, "awkward:loud=false,manner=throws-anything", "the provider 'awkward' failed");
    expectNotOpened(1, "awkward:loud=false,manner=opens-nothing", "the provider 'awkward' opened nothing");

    const Outcome demo = run({"--provider", "awkward:loud=false", "demo"});
    EXPECT_EQ(demo.status, 1);
    EXPECT_THAT(demo.errors, HasSubstr("demo needs an instrument that tests may do everything to"));
    const Outcome notifying = run({"--provider", "awkward:loud=false", "calibration", "watch", "--exercise", "1"});
    EXPECT_THAT(notifying.errors, HasSubstr("this instrument has no calibration-controller-1 control"));
}

TEST_F(ServiceConsoleProviders, GiveTheSimulatedInstrumentItsFaults)
{
    const auto expect = [this](const QString& provider, const QStringList& command, int status) {
        const Outcome outcome = run(QStringList{"--provider", provider} + command);
        EXPECT_EQ(outcome.status, status) << provider.toStdString() << "\n" << outcome.errors;
    };
    expect("simulated", {"serial", "get"}, 0);
    expect("simulated:fault=serial-number.readSerialNumber=error", {"serial", "get"}, 1);
    expect("simulated:fault=serial-number.readSerialNumber=throw", {"serial", "get"}, 3);
    expect("simulated:fault=serial-number.readSerialNumber=release", {"serial", "get"}, 0);
    expect("simulated:answers=later,delay=1000", {"serial", "get"}, 0);
    expect("simulated:fault=serial-number.readSerialNumber", {"serial", "get"}, 1);
    expect("simulated:fault=nothing.readSerialNumber=error", {"serial", "get"}, 1);
    expect("simulated:fault=serial-number.nothing=error", {"serial", "get"}, 1);
    expect("simulated:fault=usb-id.usbId=error", {"serial", "get"}, 1);
    expect("simulated:seed=4294967296", {"serial", "get"}, 1);
    expect("simulated:missing=serial-number", {"serial", "get"}, 1);
    expect("simulated:missing=nothing", {"serial", "get"}, 1);
    expect("simulated:fault-delay=3600000001", {"serial", "get"}, 1);
    expect("simulated:fault-after=4294967296", {"serial", "get"}, 1);
    EXPECT_THAT(run({"--provider", "simulated:memory-size=16", "memory", "check"}).errors, HasSubstr("100 %"));
}

TEST_F(ServiceConsoleProviders, LetTheControlsOfTheSimulatedInstrumentGoAtTheCallThatIsNamed)
{
    const Outcome outcome =
        shell("serial get\nserial get\nserial get\noffer\nserial get\n",
              {"--provider", "simulated:fault=serial-number.readSerialNumber=release,fault-after=1"}, environment);
    EXPECT_EQ(outcome.output, "100001\n100001\n100001\n");
    EXPECT_EQ(outcome.errors,
              "service-console: line 3: this instrument has no serial-number control; 'service-console info' "
              "lists those it has\n");
}

TEST_F(ServiceConsoleProviders, GiveTheSimulatedInstrumentAMemoryThatIsDamaged)
{
    const QString damaged = "simulated:memory=damaged";
    const QStringList check{"memory", "check"};
    EXPECT_EQ(run(QStringList{"--provider", "simulated:memory=intact"} + check).output, "intact\n");
    EXPECT_THAT(run(QStringList{"--provider", damaged} + check).errors, HasSubstr("checking the memory failed"));
    EXPECT_EQ(shell("memory erase --yes\nmemory check\n", {"--provider", damaged}, environment).output,
              "erased\nintact\n");

    const QStringList kept{"--state", folder.filePath("bench.state")};
    for (const QString& provider : {damaged, damaged, QString("simulated")}) {
        EXPECT_EQ(run(kept + QStringList{"--provider", provider, "--yes", "serial", "set", "1"}).status, 0);
        EXPECT_EQ(run(kept + QStringList{"--provider", provider} + check).status, 1) << "the damage is kept";
    }
    expectNotOpened(1, damaged + ",memory-size=0", "the memory has no byte that could be damaged");
}

TEST_F(ServiceConsoleProviders, GiveTheSimulatedInstrumentAFileStoreThatCannotBeUsedOrIsFull)
{
    const QString file = folder.filePath("note.txt");
    QFile note(file);
    ASSERT_TRUE(note.open(QIODevice::WriteOnly));
    note.write("four");
    note.close();
    const auto errors = [this](const QString& provider, const QStringList& command) {
        return run(QStringList{"--provider", provider} + command).errors;
    };
    const std::string unavailable = "File memory control is unavailable\n";
    EXPECT_EQ(errors("simulated:file-store=unavailable", {"files", "ls"}),
              "service-console: the files cannot be listed: " + unavailable);
    EXPECT_EQ(errors("simulated:file-store=unavailable", {"files", "put", file}),
              "service-console: the files cannot be listed: " + unavailable);
    EXPECT_EQ(errors("simulated:file-store=available", {"files", "put", file}), "");

    const QByteArray put = "files put " + file.toUtf8();
    const Outcome full =
        shell(put + "\n" + put + " copy.txt\n", {"--provider", "simulated:file-capacity=7"}, environment);
    EXPECT_EQ(full.output, "note.txt: 4 bytes written\n");
    EXPECT_EQ(full.errors, "service-console: line 2: copy.txt: no space left\n");
}

TEST_F(ServiceConsoleProviders, DoNotEndTheShellByWhatTheirInstrumentThrows)
{
    const Outcome outcome = shell("serial get\nprobe serial-number\n",
                                  {"--provider", "simulated:fault=serial-number.readSerialNumber=throw"}, environment);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.output, "serial-number present\n");
    EXPECT_THAT(outcome.errors, StartsWith("service-console: line 1: internal error: "));
}

#ifdef Q_OS_UNIX
TEST_F(ServiceConsoleProviders, AreGivenUpWhenTheUserDoesNotWait)
{
    put("awkwardprovider");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setChildProcessModifier([] { std::signal(SIGINT, SIG_DFL); }); // whoever runs the tests may ignore it
    process.setReadChannel(QProcess::StandardError);
    start(process, {"--provider", "awkward:manner=never-opens", "info"});
    QByteArray said;
    while (!said.contains("opening left") && process.waitForReadyRead(-1))
        said += process.readAllStandardError();
    ASSERT_TRUE(said.contains("opening left")) << said.toStdString();
    ASSERT_GT(process.processId(), 0);
    ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    EXPECT_TRUE(process.waitForFinished(-1));
    EXPECT_EQ(process.exitStatus(), QProcess::CrashExit) << "ended by the signal";
}
#endif

} // namespace tov::testing

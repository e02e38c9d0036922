#include "conformance/checks/checks.h"
#include "conformance/rules.h"
#include "conformance/run/child.h"
#include "conformance/run/here.h"
#include "conformance/run/report.h"
#include "service/version.h"

#include <CLI/CLI.hpp>

#include <QCoreApplication>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSaveFile>

#include <algorithm>
#include <iostream>

namespace tov::conformance {

using namespace Qt::StringLiterals;

namespace {

/// How the program ends; scripts rely on the numbers.
enum ExitStatus : int {
    Kept = 0,   ///< every rule that could be looked at is kept
    Broken = 1, ///< one is not, or the instrument cannot be opened
    BadUse = 2, ///< of the command line
    CannotWrite = 3,
};

struct Options
{
    std::string provider;
    std::string control;
    std::vector<std::string> only;
    double timeout = 10; // s
    std::uint64_t seed = 1;
    bool allowWrite = false;
    bool allowErase = false;
    bool list = false;
    bool json = false;
    bool verbose = false;
    bool inProcess = false;
    std::string after;
    std::string junit;
};

void declare(CLI::App& app, Options& options)
{
    app.set_version_flag("--version", devices::service::version);
    app.add_option("--provider", options.provider,
                   "Provider of the instrument, by its name or file, with its options: "
                   "NAME-OR-FILE[:OPTION=VALUE,...]; the simulated instrument if none is named")
        ->type_name("PROVIDER")
        ->envname("DEVICESSERVICE_PROVIDER");
    app.add_option("--control", options.control, "Look at this control only")->type_name("NAME");
    app.add_option("--only", options.only, "Look at this rule only; may be given more than once")
        ->type_name("RULE")
        ->allow_extra_args(false);
    CLI::Option* const allowWrite =
        app.add_flag("--allow-write", options.allowWrite, "Write what is there once more, and a file of its own");
    app.add_flag("--allow-erase", options.allowErase,
                 "Erase the memory, and write it again; what crashes between the two leaves it erased")
        ->needs(allowWrite);
    app.add_option("--timeout", options.timeout, "How long to wait for what must come")
        ->type_name("SECONDS")
        ->check([](const std::string& text) {
            double value = 0;
            const bool isThere = CLI::detail::lexical_cast(text, value) && value >= 0.1 && value <= 3600;
            return isThere ? std::string() : "must be from 0.1 to 3600";
        })
        ->capture_default_str();
    app.add_option("--seed", options.seed, "Determines what is chosen by chance")
        ->type_name("NUMBER")
        ->capture_default_str();
    app.add_flag("--list", options.list, "List the rules, and look at nothing");
    app.add_flag("--verbose", options.verbose, "Tell of a rule that is kept what was looked at");
    app.add_flag("--json", options.json, "Report in JSON");
    app.add_option("--junit", options.junit, "Write a report in JUnit's XML into this file, too")->type_name("FILE");
    app.add_flag("--in-process", options.inProcess,
                 "Look at the one rule in this process, for a debugger: a crash ends it");
    app.add_option("--after", options.after)->group(""); // for the processes of this program
    app.footer("Exit status: 0 all rules that could be looked at are kept, 1 one is broken or the instrument cannot be "
               "opened, 2 wrong use, 3 a report cannot be written.");
}

int fail(ExitStatus status, const QString& why)
{
    std::cerr << "service-conformance: " << why.toStdString() << '\n';
    return status;
}

const Check& checkOf(const Rule& rule)
{
    const auto found = std::ranges::find(checks(), rule.id.toStdString(), &Check::rule);
    if (found == checks().end())
        throw std::logic_error("nothing looks at " + rule.id.toStdString());
    return *found;
}

provider::Result<std::vector<Rule>> chosenRules(const Options& options)
{
    if (options.only.empty())
        return rules();
    std::vector<Rule> chosen;
    for (const std::string& id : options.only) {
        const auto found = std::ranges::find(rules(), QString::fromStdString(id), &Rule::id);
        if (found == rules().end())
            return std::unexpected(u"there is no rule '%1'; see --list"_s.arg(QString::fromStdString(id)));
        if (std::ranges::find(chosen, found->id, &Rule::id) == chosen.end())
            chosen.push_back(*found);
    }
    return chosen;
}

provider::Result<Settings> settingsOf(const Options& options)
{
    Settings settings{.timeout = std::chrono::milliseconds(static_cast<int>(options.timeout * 1000)),
                      .seed = options.seed,
                      .only = std::nullopt,
                      .mayWrite = options.allowWrite,
                      .mayErase = options.allowErase,
                      .after = options.after};
    if (options.control.empty())
        return settings;
    const auto* const found = devices::controls::find(options.control);
    if (found == nullptr)
        return std::unexpected(u"there is no control '%1'"_s.arg(QString::fromStdString(options.control)));
    settings.only = *found;
    return settings;
}

// The same command line without rules and reports.
QStringList sameAgain(const Options& options)
{
    QStringList words;
    if (!options.provider.empty())
        words << u"--provider"_s << QString::fromStdString(options.provider);
    if (!options.control.empty())
        words << u"--control"_s << QString::fromStdString(options.control);
    if (options.allowWrite)
        words << u"--allow-write"_s;
    if (options.allowErase)
        words << u"--allow-erase"_s;
    if (options.timeout != Options().timeout)
        words << u"--timeout"_s << QString::number(options.timeout);
    return words << u"--seed"_s << QString::number(options.seed);
}

// As the platform's usual shell takes it for one word.
QString quoted(QString word)
{
#ifdef Q_OS_WIN
    return u'"' + word + u'"';
#else
    return u'\'' + word.replace(u'\'', u"'\\''"_s) + u'\'';
#endif
}

QString asTyped(const QStringList& words)
{
    static const QRegularExpression plain(u"^[A-Za-z0-9_./:=,+-]+$"_s);
    QString line = u"service-conformance"_s;
    for (const QString& word : words)
        line += u' ' + (plain.match(word).hasMatch() ? word : quoted(word));
    return line;
}

int list()
{
    for (const Rule& rule : rules())
        std::cout << rule.id.leftJustified(12).toStdString() << rule.must.toStdString() << "\n";
    return std::cout.flush() ? Kept : CannotWrite;
}

/// Looks at the rules, each in a process of its own, and reports.
class Run
{
public:
    Run(const Options& options, const host::ProviderChoice& choice, const Settings& settings)
        : m_options(options)
        , m_settings(settings)
        , m_report(choice.provider, settings, asTyped(sameAgain(options)))
    {
    }

    int operator()(const std::vector<Rule>& chosen)
    {
        QString cannotOpen;
        say(m_report.heading());
        for (const Rule& rule : chosen) {
            if (std::exchange(m_group, rule.group) != rule.group)
                say("\n" + rule.group.toStdString() + "\n");
            say("  " + rule.id.leftJustified(13).toStdString());
            const auto result = look(rule);
            if (!result) {
                cannotOpen = result.error();
                break;
            }
            m_report.add(rule, *result);
            say(m_report.last(m_options.verbose));
        }
        say(cannotOpen.isEmpty() ? m_report.summary() : "\n");
        if (m_options.json)
            std::cout << QJsonDocument(m_report.toJson()).toJson().constData();
        if (!std::cout.flush())
            return fail(CannotWrite, u"cannot write to standard output"_s);
        if (const auto written = writeJUnit(); !written)
            return fail(CannotWrite, written.error());
        if (!cannotOpen.isEmpty())
            return fail(Broken, cannotOpen);
        return m_report.count(Verdict::Fail) == 0 ? Kept : Broken;
    }

private:
    void say(const std::string& text) const
    {
        if (!m_options.json)
            std::cout << text << std::flush;
    }

    provider::Result<Result> look(const Rule& rule)
    {
        const Check& check = checkOf(rule);
        if (check.look == nullptr)
            return Result{.verdict = Verdict::NotCheckable, .seen = QString::fromUtf8(check.whyNot), .leftOut = {}};
        // A check waits up to twice the time-out before it says anything.
        const auto silence = 3 * m_settings.timeout + std::chrono::seconds(2);
        const QStringList arguments = sameAgain(m_options) << u"--only"_s << rule.id << u"--in-process"_s;
        ChildRun run = runInChild(arguments, silence);
        QStringList passed;
        std::chrono::milliseconds took(0);
        while (!run.goOnAfter.isEmpty()) {
            passed << run.goOnAfter;
            took += run.result.took;
            run = runInChild(arguments + QStringList{u"--after"_s, run.goOnAfter}, silence);
        }
        if (!run.error.isEmpty())
            return std::unexpected(run.error);
        if (!run.instrument.isEmpty())
            m_report.setInstrument(run.instrument);
        run.result.took += took;
        if (!passed.isEmpty() && run.result.verdict != Verdict::Fail) {
            if (run.result.verdict == Verdict::Pass)
                passed << run.result.seen;
            run.result.verdict = Verdict::Pass; // whether or not something was left to be looked at
            run.result.seen = passed.join(u", "_s);
        }
        return run.result;
    }

    provider::Result<void> writeJUnit() const
    {
        if (m_options.junit.empty())
            return {};
        QSaveFile file(QString::fromStdString(m_options.junit));
        if (!file.open(QIODevice::WriteOnly) || file.write(m_report.toJUnit()) < 0 || !file.commit())
            return std::unexpected(file.fileName() + u": "_s + file.errorString());
        return {};
    }

    const Options& m_options;
    const Settings m_settings;
    Report m_report;
    QString m_group;
};

int runConformance(const std::vector<std::string>& arguments)
{
    Options options;
    CLI::App app("Looks whether an implementation of the SDK keeps to what adapters rely on.", "service-conformance");
    declare(app, options);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::Success& helpOrVersion) {
        return app.exit(helpOrVersion);
    } catch (const CLI::ParseError& error) {
        return fail(BadUse, QString::fromUtf8(error.what()) + u"; see --help"_s);
    }
    if (options.list)
        return list();
    const auto chosen = chosenRules(options);
    if (!chosen)
        return fail(BadUse, chosen.error());
    const auto settings = settingsOf(options);
    if (!settings)
        return fail(BadUse, settings.error());
    const auto choice = host::chooseProvider(QString::fromStdString(options.provider));
    if (!choice)
        return fail(BadUse, choice.error());
    if (!options.inProcess)
        return Run(options, *choice, *settings)(*chosen);

    const Check& check = checkOf(chosen->front());
    if (chosen->size() != 1 || check.look == nullptr)
        return fail(BadUse, u"--in-process takes one rule by --only, and one that can be looked at"_s);
    return runHere(*choice, check, *settings);
}

} // namespace

} // namespace tov::conformance

int main(int argc, char** argv)
try {
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(tov::devices::service::version);
    std::vector<std::string> arguments;
    for (const QString& argument : QCoreApplication::arguments().mid(1))
        arguments.push_back(argument.toStdString());
    return tov::conformance::runConformance(arguments);
} catch (const std::exception& error) {
    std::cerr << "service-conformance: internal error: " << error.what() << '\n';
    return tov::conformance::CannotWrite;
}

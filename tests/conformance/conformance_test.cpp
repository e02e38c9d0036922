#include "conformance/checks/checks.h"
#include "conformance/rules.h"
#include "program.h"
#include "simulator/plugin/simulatedconnection.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace tov::conformance {

using namespace ::testing;
using namespace Qt::StringLiterals;

namespace {

/// How a run of the kit ended.
struct Outcome : tov::testing::Outcome
{
    std::map<QString, QString> verdicts() const
    {
        std::map<QString, QString> all;
        for (const auto& each : json()["rules"_L1].toArray())
            all[each.toObject()["rule"_L1].toString()] = each.toObject()["verdict"_L1].toString();
        return all;
    }

    QJsonObject rule(const QString& id) const
    {
        for (const auto& each : json()["rules"_L1].toArray())
            if (each.toObject()["rule"_L1].toString() == id)
                return each.toObject();
        return {};
    }
};

Outcome conformance(const QStringList& arguments)
{
    QProcess process;
    tov::testing::start(process, QStringLiteral(SERVICE_CONFORMANCE), arguments);
    return {tov::testing::finish(process)};
}

QString mutant(const QString& options)
{
    return QStringLiteral(MUTANTS) + u':' + options;
}

std::set<QString> withVerdict(const Outcome& run, const QString& verdict)
{
    std::set<QString> ids;
    for (const auto& [id, given] : run.verdicts())
        if (given == verdict)
            ids.insert(id);
    return ids;
}

class NoProgress final : public IProgress
{
public:
    void begin(const std::string& /*what*/) override {}
    void endAfter(const std::string& operation) override { FAIL() << operation; }
};

std::vector<std::string> checkedRules()
{
    std::vector<std::string> ids;
    for (const Check& check : checks())
        if (check.look != nullptr)
            ids.emplace_back(check.rule);
    return ids;
}

std::set<QString> notCheckable()
{
    std::set<QString> ids;
    for (const Check& check : checks())
        if (check.look == nullptr)
            ids.insert(QString::fromUtf8(check.rule.data(), static_cast<qsizetype>(check.rule.size())));
    return ids;
}

} // namespace

TEST(ConformanceRules, HaveEachOneCheckOrAReasonWhyNot)
{
    std::vector<std::string> onThePage;
    for (const Rule& rule : rules()) {
        onThePage.push_back(rule.id.toStdString());
        EXPECT_FALSE(rule.must.isEmpty()) << rule.id.toStdString();
    }
    std::vector<std::string> checked;
    for (const Check& check : checks()) {
        checked.emplace_back(check.rule);
        EXPECT_EQ(check.look == nullptr, check.whyNot != nullptr) << check.rule;
    }
    EXPECT_THAT(onThePage, SizeIs(Gt(30U)));
    EXPECT_THAT(checked, ElementsAreArray(onThePage));
}

// These two take longest: suites of their own run beside the others.
TEST(ConformanceOfTheSimulatedInstrument, IsAsTheRulesAsk)
{
    const Outcome run = conformance({u"--json"_s, u"--allow-write"_s, u"--allow-erase"_s, u"--seed"_s, u"2"_s});
    EXPECT_EQ(run.status, 0) << run.output;
    EXPECT_EQ(run.errors, "");
    EXPECT_THAT(withVerdict(run, u"not checkable"_s), ContainerEq(notCheckable()));
    EXPECT_THAT(withVerdict(run, u"not applicable"_s), ElementsAre(u"OBSERVER-7"_s));
    EXPECT_THAT(withVerdict(run, u"pass"_s), SizeIs(rules().size() - notCheckable().size() - 1));
    EXPECT_EQ(run.json()["instrument"_L1].toObject()["model"_L1].toString(), u"simulated"_s);
}

TEST(ConformanceOfOneThatCanDoEverything, IsAsTheRulesAskAlsoWhenItAnswersLater)
{
    const Outcome run = conformance({u"--json"_s, u"--provider"_s, mutant(u"tells-inside=true"_s)});
    EXPECT_EQ(run.status, 0) << run.output;
    EXPECT_THAT(withVerdict(run, u"pass"_s), SizeIs(rules().size() - notCheckable().size())) << run.output;
}

TEST(Conformance, IsThatOfOneThatIsSlow)
{
    const Outcome run = conformance({u"--json"_s, u"--provider"_s, u"simulated:answers=later,delay=150000"_s,
                                     u"--control"_s, u"serial-number"_s, u"--timeout"_s, u"1"_s, u"--only"_s,
                                     u"OPS-1"_s, u"--only"_s, u"CALLBACK-1"_s, u"--only"_s, u"CALLBACK-3"_s});
    EXPECT_EQ(run.status, 0) << run.output;
}

TEST(Conformance, IsThatOfOneWhoseOperationsThrow)
{
    QStringList arguments{u"--json"_s, u"--provider"_s,
                          u"simulated:fault=serial-number.readSerialNumber=throw,fault=file-memory.fileList=throw"_s};
    for (const QString& id : {u"OPS-1"_s, u"OPS-4"_s, u"CALLBACK-1"_s, u"CALLBACK-2"_s, u"LIFE-3"_s})
        arguments << u"--only"_s << id;
    const Outcome run = conformance(arguments);
    EXPECT_EQ(run.status, 0) << run.output;
}

TEST(Conformance, IsTriedWithoutTestHooksAndWithOneControl)
{
    const Outcome run = conformance({u"--json"_s, u"--provider"_s, QStringLiteral(OWN_PROVIDER)});
    EXPECT_EQ(run.status, 0) << run.output;
    EXPECT_THAT(withVerdict(run, u"pass"_s), UnorderedElementsAre(u"LOOKUP-1"_s, u"LOOKUP-2"_s, u"LOOKUP-3"_s,
                                                                  u"LOOKUP-4"_s, u"LIFE-1"_s, u"OPS-1"_s));
    EXPECT_THAT(run.rule(u"LOOKUP-2"_s)["leftOut"_L1].toString().toStdString(), HasSubstr("no test hook"));
    EXPECT_THAT(run.rule(u"CALLBACK-1"_s)["seen"_L1].toString().toStdString(),
                HasSubstr("lacks what the rule is about"));
}

TEST(Conformance, WritesNothingThatIsNotAllowed)
{
    const QString changes = u"file-memory.writeFile file-memory.deleteFile memory-operations.write "
                            "memory-operations.erase potentiometers.writeToRam potentiometers.writeToEeprom "
                            "serial-number.writeSerialNumber usb-id.writeUsbId "
                            "system-terms.writeSystemTerms ifsw-calibration.saveCalibrationData "
                            "factory-power-calibration.saveCalibrationData"_s;
    QStringList faults;
    for (const QString& change : changes.split(u' '))
        faults << u"fault=%1=throw"_s.arg(change);
    const QString failing = u"simulated:"_s + faults.join(u',');
    const QStringList callbacks{u"--only"_s, u"CALLBACK-1"_s, u"--only"_s, u"CALLBACK-3"_s};

    const Outcome careful = conformance(QStringList{u"--json"_s, u"--provider"_s, failing} + callbacks);
    EXPECT_EQ(careful.status, 0) << careful.output;
    for (const QString& id : {u"CALLBACK-1"_s, u"CALLBACK-3"_s})
        EXPECT_THAT(careful.rule(id)["leftOut"_L1].toString().toStdString(),
                    AllOf(Not(HasSubstr("throws")), HasSubstr("writeSerialNumber()"),
                          HasSubstr("erase(): takes --allow-write and --allow-erase")));

    const Outcome daring =
        conformance(QStringList{u"--json"_s, u"--allow-write"_s, u"--provider"_s, failing} + callbacks);
    for (const QString& id : {u"CALLBACK-1"_s, u"CALLBACK-3"_s})
        EXPECT_THAT(daring.rule(id)["leftOut"_L1].toString().toStdString(), HasSubstr("throws"));
}

TEST(Conformance, LeavesTheInstrumentAsItWas)
{
    const QTemporaryDir folder;
    const auto kept = [&](const simulator::SimulatedInstrument& instrument, const QString& name) {
        QFile file(folder.filePath(name));
        instrument.save(file.fileName());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    };
    auto connection = std::make_unique<simulator::SimulatedConnection>(simulator::Configuration());
    const auto instrument = std::static_pointer_cast<simulator::SimulatedInstrument>(connection->instrument());
    const QByteArray before = kept(*instrument, u"before"_s);

    Settings settings;
    settings.mayWrite = true;
    settings.mayErase = true;
    NoProgress progress;
    Bench bench(std::move(connection), settings, progress);
    for (const Check& check : checks()) {
        const bool endsTheProgram = check.rule == "CALLBACK-2";
        const bool isOfOperations = check.rule.starts_with("CALLBACK") || check.rule.starts_with("OPS");
        if (isOfOperations && check.look != nullptr && !endsTheProgram) {
            EXPECT_THAT(check.look(bench).looked, Not(IsEmpty())) << check.rule;
        }
    }
    EXPECT_EQ(kept(*instrument, u"after"_s), before);
}

TEST(Conformance, TellsWhatIsBroken)
{
    const QStringList arguments{
        u"--provider"_s, mutant(u"breaks=CALLBACK-6"_s), u"--only"_s, u"CALLBACK-6"_s, u"--seed"_s, u"7"_s};
    const Outcome run = conformance(arguments);
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(
        run.output,
        AllOf(HasSubstr("provider mutant 1.0, seed 7\n"), HasSubstr("  CALLBACK-6   fail"),
              HasSubstr(
                  "must:      an error code of the number 0 is a success in every category; any other is a failure"),
              HasSubstr("seen:      serial-number readSerialNumber() fails with the number 0 of the category"),
              HasSubstr("otherwise: a failure with the number 0 is taken for a success, and its value is used"),
              HasSubstr("repeat:    service-conformance --provider "), HasSubstr(" --seed 7 --only CALLBACK-6\n"),
              EndsWith("1 rule: 1 fail\nbroken: CALLBACK-6\n")));
}

TEST(Conformance, WritesAReportForIntegrationSystems)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"report.xml"_s);
    const Outcome run = conformance({u"--provider"_s, mutant(u"breaks=OBSERVER-4"_s), u"--only"_s, u"OBSERVER-4"_s,
                                     u"--only"_s, u"OPS-2"_s, u"--only"_s, u"LOOKUP-3"_s, u"--junit"_s, path});
    EXPECT_EQ(run.status, 1);

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    QList<int> counts;
    QStringList cases;
    QStringList inside;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == u"testsuite"_s)
            for (const auto* const attribute : {"tests", "failures", "skipped"})
                counts << xml.attributes().value(QLatin1StringView(attribute)).toInt();
        else if (xml.name() == u"testcase"_s)
            cases << xml.attributes().value(u"name"_s).toString();
        else
            inside << cases.last() + u' ' + xml.name().toString();
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_THAT(counts, ElementsAre(3, 1, 1));
    EXPECT_THAT(cases, ElementsAre(u"OBSERVER-4"_s, u"OPS-2"_s, u"LOOKUP-3"_s));
    EXPECT_THAT(inside, ElementsAre(u"OBSERVER-4 failure"_s, u"OPS-2 skipped"_s));
}

TEST(Conformance, RefusesWhatItCannotUnderstand)
{
    const std::map<QStringList, std::string> refused{
        {{u"--only"_s, u"LOOKUP-99"_s}, "there is no rule 'LOOKUP-99'; see --list"},
        {{u"--control"_s, u"toaster"_s}, "there is no control 'toaster'"},
        {{u"--provider"_s, u"nobody"_s}, "nobody"},
        {{u"--timeout"_s, u"0"_s}, "--timeout"},
        {{u"--seed"_s, u"some"_s}, "--seed"},
        {{u"--in-process"_s}, "--only"},
        {{u"--allow-erase"_s}, "--allow-write"},
        {{u"surplus"_s}, "surplus"},
    };
    for (const auto& [arguments, says] : refused) {
        const Outcome run = conformance(arguments);
        EXPECT_EQ(run.status, 2) << says;
        EXPECT_EQ(run.output, "") << says;
        EXPECT_THAT(run.errors, AllOf(StartsWith("service-conformance: "), HasSubstr(says)));
    }
}

TEST(Conformance, SaysWhyItCannotOpenTheInstrument)
{
    const Outcome run = conformance({u"--provider"_s, u"simulated:missing=toaster"_s, u"--only"_s, u"LOOKUP-1"_s});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "service-conformance: the simulated instrument has no control 'toaster'\n");
}

TEST(Conformance, SaysWhenAReportCannotBeWritten)
{
    const Outcome run = conformance({u"--only"_s, u"OPS-2"_s, u"--junit"_s, u"/no/such/folder/report.xml"_s});
    EXPECT_EQ(run.status, 3);
    EXPECT_THAT(run.errors, HasSubstr("report.xml"));
}

/// Each rule that can be looked at, and a mutant that breaks it.
class EachConformanceMutant : public TestWithParam<std::string>
{
};

TEST_P(EachConformanceMutant, IsNoticedByTheCheckOfItsRule)
{
    const QString id = QString::fromStdString(GetParam());
    const Outcome run = conformance(
        {u"--json"_s, u"--timeout"_s, u"1"_s, u"--provider"_s, mutant(u"late=3500,breaks="_s + id), u"--only"_s, id});
    EXPECT_EQ(run.status, 1) << run.output;
    EXPECT_THAT(withVerdict(run, u"fail"_s), ElementsAre(id));
}

TEST(ConformanceMutants, AreNoticedAlsoWhenTheyTellInsideAddObserver)
{
    for (const QString& id : {u"LIFE-2"_s, u"OBSERVER-1"_s, u"OBSERVER-3"_s, u"OBSERVER-9"_s}) {
        const Outcome run =
            conformance({u"--json"_s, u"--timeout"_s, u"1"_s, u"--control"_s, u"serial-number"_s, u"--provider"_s,
                         mutant(u"tells-inside=true,breaks="_s + id), u"--only"_s, id});
        EXPECT_THAT(withVerdict(run, u"fail"_s), ElementsAre(id)) << run.output;
    }
}

INSTANTIATE_TEST_SUITE_P(All, EachConformanceMutant, ValuesIn(checkedRules()), [](const auto& tested) {
    std::string name = tested.param;
    std::ranges::replace(name, '-', '_');
    return name;
});

} // namespace tov::conformance

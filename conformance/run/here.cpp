#include "conformance/run/here.h"

#include "conformance/run/result.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdlib>
#include <exception>
#include <iostream>

namespace tov::conformance {

using namespace Qt::StringLiterals;

namespace {

constexpr char recordSeparator = '\x1e';

void tell(const QJsonObject& record)
{
    const QByteArray line = QByteArray("\n") + recordSeparator + QJsonDocument(record).toJson(QJsonDocument::Compact);
    std::cout << line.constData() << '\n' << std::flush;
}

class Progress final : public IProgress
{
public:
    void begin(const std::string& what) override { tell({{u"at"_s, QString::fromStdString(what)}}); }

    void endAfter(const std::string& operation) override
    {
        tell({{u"goOnAfter"_s, QString::fromStdString(operation)}});
        std::_Exit(EXIT_SUCCESS);
    }
};

Result result(Verdict verdict, const std::string& seen)
{
    return {.verdict = verdict, .seen = QString::fromStdString(seen), .leftOut = {}};
}

Result judge(Bench& bench, const Check& check)
try {
    const Seen seen = check.look(bench);
    return {.verdict = Verdict::Pass,
            .seen = QString::fromStdString(seen.looked),
            .leftOut = QString::fromStdString(seen.leftOut)};
} catch (const NotApplicable& why) {
    return result(Verdict::NotApplicable, why.what());
} catch (const NotAllowed& why) {
    return result(Verdict::Skipped, why.what());
} catch (const Finding& finding) {
    return result(Verdict::Fail, finding.what());
} catch (const std::exception& error) {
    return result(Verdict::Fail, std::string("something throws that should not: ") + error.what());
} catch (...) {
    return result(Verdict::Fail, "something throws that should not");
}

} // namespace

int runHere(const host::ProviderChoice& choice, const Check& check, const Settings& settings)
{
    static Progress progress;
    progress.begin("the instrument is opened");
    auto opened = host::openInstrument(choice);
    if (!opened) {
        tell({{u"error"_s, opened.error()}});
        return EXIT_FAILURE;
    }
    tell({{u"instrument"_s, opened->description.id},
          {u"model"_s, opened->description.model},
          {u"serialNumber"_s, opened->description.serialNumber}});

    Bench bench(std::move(opened->connection), settings, progress);
    const Result found = judge(bench, check);
    if (found.verdict == Verdict::Fail) {
        tell(toJson(found));
        std::_Exit(EXIT_FAILURE); // what is broken may hang or crash when it is closed
    }
    bench.close();
    tell(toJson(found));
    progress.begin("the program ends");
    return EXIT_SUCCESS;
}

} // namespace tov::conformance

#include "conformance/bench/callbackoperations.h"
#include "conformance/checks/rulechecks.h"
#include "sdk/service/ifilememorycontrol.h"

#include <QStringDecoder>

#include <algorithm>
#include <atomic>
#include <exception>
#include <new>
#include <optional>

namespace tov::conformance::callbacks {

using Answer = Bench::Answer;
using Effect = CallbackOperation::Effect;

namespace {

std::string seconds(std::chrono::milliseconds time)
{
    return QString::number(static_cast<double>(time.count()) / 1000).toStdString() + " s";
}

void expectAnswer(const Bench& bench, const std::string& name, const Answers& answers,
                  std::chrono::milliseconds patience)
{
    if (!bench.waitUntil([&] { return answers.count() > 0; }, patience))
        throw Finding(name + " was not answered within " + seconds(patience));
}

// Calls and waits patiently: what comes later than it should is another rule's.
void callOnce(const Bench& bench, const std::string& name, const Call& call, NamedAnswers& all)
{
    const Answers answers;
    bench.begin(name);
    make(name, call.make, answers.callback());
    all.emplace_back(name, answers);
    expectAnswer(bench, name, answers, 2 * bench.settings().timeout);
}

bool isFitToBeShown(const std::string& text)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString shown = utf8(QByteArrayView(text));
    const auto isPrintable = [](QChar each) { return each.isPrint() || each.isSurrogate(); };
    return !utf8.hasError() && !shown.trimmed().isEmpty() && std::ranges::all_of(shown, isPrintable);
}

void expectToBeShown(const std::string& name, std::error_code error)
{
    if (error && !isFitToBeShown(error.message()))
        throw Finding(name + " fails with a text that is not fit to be shown: "
                      + QByteArray::fromStdString(error.message()).toPercentEncoding(" ").toStdString());
}

// What fails without a test hook.
Seen readMissingFile(Bench& bench)
{
    const std::string name = "file-memory readFile() of a file that is not there";
    for (const devices::ControlName& control : bench.offered()) {
        if (control != devices::controls::fileMemory)
            continue;
        const auto files = std::static_pointer_cast<sdk::service::IFileMemoryControl>(bench.held(control));
        const std::error_code error = answerOf(bench, name, [&](const Answered& answered) {
            files->readFile({.name = "conformance.none", .word1 = 0, .word2 = 0},
                            [=](const auto& /*content*/, std::error_code failure) { answered(failure); });
        });
        if (!error)
            throw NotApplicable("does not fail", name);
        expectToBeShown(name, error);
        return {name, "other failures: the provider has no test hook to choose how an operation answers"};
    }
    throw NotApplicable("is not offered", "file-memory");
}

} // namespace

Seen areCalledOnce(Bench& bench)
{
    constexpr int calls = 3;

    NamedAnswers all;
    const auto look = [&](const CallbackOperation& operation, const std::string& name, const Call& call) {
        for (int count = 0; count < calls; ++count)
            callOnce(bench, name, call, all);
        if (const auto failing = answeringIfItCan(bench, operation, Answer::WithError))
            callOnce(bench, name + " that fails", call, all);
        if (!onlyReads(operation))
            return;
        if (const auto late = answeringIfItCan(bench, operation, Answer::Late)) {
            const Answers answers;
            make(name, call.make, answers.callback());
            all.emplace_back(name + " that is late", answers);
        }
    };
    Seen seen = forEachOperation(bench, everyOperation, look);
    for (const auto& [name, answers] : all) {
        bench.begin(name);
        expectAnswer(bench, name, answers, bench.patienceForLateAnswers());
    }
    bench.settle();
    for (const auto& [name, answers] : all)
        if (answers.count() != 1)
            throw Finding(name + " was answered " + std::to_string(answers.count()) + " times");
    return seen;
}

Seen areCalledOnceMoreAtMostWhenTheyThrow(Bench& bench)
{
    const auto look = [&](const CallbackOperation& /*operation*/, const std::string& name, const Call& call) {
        if (call.restore)
            throw NotApplicable("takes a file that nobody deletes if the SDK ends the program", name);
        const auto answers = std::make_shared<std::atomic<int>>(0);
        bench.begin(name + ", whose callback throws");
        bench.passIfTerminated(name);
        try {
            call.make([answers](std::error_code /*error*/) {
                if ((*answers)++ == 0)
                    throw std::bad_alloc();
            });
            bench.waitUntil([&] { return *answers > 0; });
        } catch (const std::exception&) { // as it is, or as something else
            bench.begin(name + ", whose callback's exception passed to the caller");
        }
        if (*answers == 0)
            throw NotApplicable("throws, or is not answered", name);
        bench.settle();
        if (*answers > 2)
            throw Finding(name + " calls a callback that has thrown " + std::to_string(*answers - 1) + " times more");
    };
    return forEachOperation(bench, onlyReads, look);
}

Seen areCalledInTime(Bench& bench)
{
    std::chrono::milliseconds slowest(0);
    const auto look = [&](const CallbackOperation& /*operation*/, const std::string& name, const Call& call) {
        using std::chrono::steady_clock;
        const auto start = steady_clock::now();
        const Answers answers;
        bench.begin(name);
        make(name, call.make, answers.callback());
        expectAnswer(bench, name, answers, bench.settings().timeout);
        slowest = std::max(slowest, std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now() - start));
    };
    Seen seen = forEachOperation(bench, everyOperation, look);
    seen.looked += "; the slowest took " + std::to_string(slowest.count()) + " ms";
    return seen;
}

Seen areCalledWhileTheCallerWaits(Bench& bench)
{
    const auto look = [&](const CallbackOperation& /*operation*/, const std::string& name, const Call& call) {
        const Answers answers;
        bench.begin(name + ", for which its caller waits");
        make(name, call.make, answers.callback());
        if (!answers.block(bench.settings().timeout))
            throw Finding(name + " is not answered while the thread that called it waits");
    };
    return forEachOperation(bench, everyOperation, look);
}

Seen areNotCalledByWhatThrows(Bench& bench)
{
    bench.needs(Bench::Ability::Answer);
    NamedAnswers all;
    const auto look = [&](const CallbackOperation& operation, const std::string& name, const Call& call) {
        const Answering throwing(bench, operation, Answer::Throwing);
        const Answers answers;
        bench.begin(name + " that throws");
        try {
            call.make(answers.callback());
        } catch (const std::exception&) {
            all.emplace_back(name, answers);
            return;
        }
        throw NotApplicable("does not throw when it is told to", name);
    };
    Seen seen = forEachOperation(bench, everyOperation, look);
    bench.settle();
    for (const auto& [name, answers] : all)
        if (answers.count() != 0)
            throw Finding(name + " throws and answers too");
    return seen;
}

Seen tellFailuresByTheirNumber(Bench& bench)
{
    bench.needs(Bench::Ability::Answer);
    const auto look = [&](const CallbackOperation& operation, const std::string& name, const Call& call) {
        const Answering failing(bench, operation, Answer::WithError);
        const std::error_code error = answerOf(bench, name + " that fails", call.make);
        if (!error)
            throw Finding(name + " fails with the number 0 of the category " + error.category().name());
    };
    return forEachOperation(bench, everyOperation, look);
}

Seen tellReadableTextsOfFiles(Bench& bench)
{
    const auto look = [&](const CallbackOperation& operation, const std::string& name, const Call& call) {
        const Answering failing(bench, operation, Answer::WithError);
        expectToBeShown(name, answerOf(bench, name + " that fails", call.make));
    };
    try {
        return forEachOperation(bench, ofTheFileMemory, look);
    } catch (const NotApplicable&) {
        return readMissingFile(bench);
    }
}

} // namespace tov::conformance::callbacks

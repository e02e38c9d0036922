#include "conformance/bench/callbackoperations.h"
#include "conformance/checks/rulechecks.h"
#include "sdk/service/ifilememorycontrol.h"

#include <QStringDecoder>

#include <algorithm>
#include <atomic>
#include <exception>
#include <new>
#include <optional>
#include <utility>

namespace tov::conformance::callbacks {

using Answer = Bench::Answer;
using Effect = CallbackOperation::Effect;

namespace {

using NamedAnswers = std::vector<std::pair<std::string, Answers>>;

std::string seconds(std::chrono::milliseconds time)
{
    return QString::number(static_cast<double>(time.count()) / 1000).toStdString() + " s";
}

// One that throws answers nothing, as it may.
void make(const Call& call, const std::string& name, const Answered& answered)
try {
    call.make(answered);
} catch (const std::exception& error) {
    throw NotApplicable(std::string("throws: ") + error.what(), name);
}

// Calls and waits patiently: what comes later than it should is another rule's.
void callOnce(const Bench& bench, const std::string& name, const Call& call, NamedAnswers& all)
{
    const Answers answers;
    bench.begin(name);
    make(call, name, answers.callback());
    all.emplace_back(name, answers);
    if (!bench.waitUntil([&] { return answers.count() > 0; }, 2 * bench.settings().timeout))
        throw Finding(name + " was not answered within " + seconds(2 * bench.settings().timeout));
}

// What only some providers can have answered so.
std::optional<Answering> answering(Bench& bench, const CallbackOperation& operation, Answer answer)
try {
    return std::optional<Answering>(std::in_place, bench, operation, answer);
} catch (const NotApplicable&) {
    return std::nullopt;
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

Seen readMissingFile(Bench& bench)
{
    const std::string name = "file-memory readFile() of a file that is not there";
    const auto offered = bench.offered();
    const auto isFileMemory = [](const devices::ControlName& each) {
        return each.keys.sdk == devices::controls::fileMemory.keys.sdk;
    };
    const auto files = bench.find(devices::controls::fileMemory);
    if (std::ranges::none_of(offered, isFileMemory) || !files)
        throw NotApplicable("is not offered", "file-memory");
    const std::error_code error = answerOf(bench, name, [&](const Answered& answered) {
        files->readFile({.name = "conformance.none", .word1 = 0, .word2 = 0},
                        [=](const auto& /*content*/, std::error_code failure) { answered(failure); });
    });
    if (!error)
        throw NotApplicable("does not fail", name);
    expectToBeShown(name, error);
    return {name, "other failures: the provider has no test hook to choose how an operation answers"};
}

} // namespace

Seen areCalledOnce(Bench& bench)
{
    constexpr int calls = 3;

    NamedAnswers all;
    const auto look = [&](const CallbackOperation& operation, const std::string& name, const Call& call) {
        for (int count = 0; count < calls; ++count)
            callOnce(bench, name, call, all);
        if (const auto failing = answering(bench, operation, Answer::WithError))
            callOnce(bench, name + " that fails", call, all);
        if (!onlyReads(operation))
            return;
        if (const auto late = answering(bench, operation, Answer::Late))
            make(call, name, all.emplace_back(name + " that is late", Answers()).second.callback());
    };
    Seen seen = forEachOperation(bench, everyOperation, look);
    for (const auto& [name, answers] : all) {
        bench.begin(name);
        if (!bench.waitUntil([&] { return answers.count() > 0; }, bench.patienceForLateAnswers()))
            throw Finding(name + " was not answered within " + seconds(bench.patienceForLateAnswers()));
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
        const auto answers = std::make_shared<std::atomic<int>>(0);
        bench.begin(name + ", whose callback throws");
        bench.passIfTerminated(name);
        try {
            call.make([answers](std::error_code /*error*/) {
                if ((*answers)++ == 0)
                    throw std::bad_alloc();
            });
            bench.waitUntil([&] { return *answers > 0; });
        } catch (const std::bad_alloc&) {
            bench.begin(name + ", whose callback's exception passed to the caller");
        }
        if (*answers == 0)
            throw Finding(name + " was not answered");
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
        make(call, name, answers.callback());
        if (!bench.waitUntil([&] { return answers.count() > 0; }))
            throw Finding(name + " was not answered within " + seconds(bench.settings().timeout));
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
        make(call, name, answers.callback());
        if (!answers.block(bench.settings().timeout))
            throw Finding(name + " is not answered while the thread that called it waits");
    };
    return forEachOperation(bench, everyOperation, look);
}

Seen areNotCalledByWhatThrows(Bench& bench)
{
    bench.hooksFor(Bench::Ability::Answer);
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
    bench.hooksFor(Bench::Ability::Answer);
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
    if (!bench.can(Bench::Ability::Answer))
        return readMissingFile(bench);
    const auto look = [&](const CallbackOperation& operation, const std::string& name, const Call& call) {
        const Answering failing(bench, operation, Answer::WithError);
        expectToBeShown(name, answerOf(bench, name + " that fails", call.make));
    };
    return forEachOperation(bench, ofTheFileMemory, look);
}

} // namespace tov::conformance::callbacks

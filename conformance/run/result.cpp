#include "conformance/run/result.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tov::conformance {

using namespace Qt::StringLiterals;

namespace {

constexpr auto names = std::to_array<std::pair<Verdict, QLatin1StringView>>({
    {Verdict::Pass, "pass"_L1},
    {Verdict::Fail, "fail"_L1},
    {Verdict::NotApplicable, "not applicable"_L1},
    {Verdict::Skipped, "skipped"_L1},
    {Verdict::NotCheckable, "not checkable"_L1},
});

} // namespace

QString named(Verdict verdict)
{
    return std::ranges::find(names, verdict, &std::pair<Verdict, QLatin1StringView>::first)->second;
}

QJsonObject toJson(const Result& result)
{
    return {{u"verdict"_s, named(result.verdict)},
            {u"seen"_s, result.seen},
            {u"leftOut"_s, result.leftOut},
            {u"milliseconds"_s, static_cast<qint64>(result.took.count())}};
}

Result fromJson(const QJsonObject& json)
{
    const auto verdict =
        std::ranges::find_if(names, [&](const auto& each) { return json["verdict"_L1].toString() == each.second; });
    return {.verdict = verdict != names.end() ? verdict->first : Verdict::Fail,
            .seen = json["seen"_L1].toString(),
            .leftOut = json["leftOut"_L1].toString(),
            .took = std::chrono::milliseconds(json["milliseconds"_L1].toInteger())};
}

} // namespace tov::conformance

#include "tools/tuning/tuning.h"

#include "tools/text/suggestions.h"
#include "tools/text/values.h"

namespace tov::inline tools {

void changeSetting(host::InstrumentSession& session, const TuneSetting& setting, const std::string& text)
{
    if (!setting.write)
        throw BadUse(setting.name + " can only be read");
    const auto refuse = [&](const std::string& instead) {
        return BadUse(quoted(text) + " is no value for " + setting.name + ": use " + instead);
    };
    const auto asked = setting.parse(text);
    if (!asked)
        throw refuse(setting.typeInWords);
    if (setting.allowed)
        if (const TakenNumbers taken = setting.allowed(session); !taken.contain(asked->toDouble()))
            throw refuse(taken.inWords());

    const QJsonValue before = setting.read(session);
    setting.write(session, *asked);
    const QJsonValue kept = setting.read(session);
    if (kept == *asked)
        return;
    const std::string refusal = "the instrument did not take " + toText(*asked) + " for " + setting.name;
    if (kept != before && !before.isNull())
        setting.write(session, before);
    const QJsonValue now = setting.read(session);
    throw Failure(now == before ? refusal + " but " + shown(kept) + "; it holds " + shown(before) + " as before"
                                : refusal + "; it held " + shown(before) + " before, holds " + shown(now)
                                      + " now, and did not take that back");
}

std::string allowedBy(host::InstrumentSession& session, const TuneSetting& setting)
{
    return setting.allowed ? setting.allowed(session).inColumn() : setting.type;
}

std::string shown(const QJsonValue& value)
{
    return value.isNull() ? "none" : toText(value);
}

} // namespace tov::inline tools

#include "tools/tuning/tuning.h"

#include "tools/text/suggestions.h"
#include "tools/text/values.h"

namespace tov::inline tools {

namespace {

BadUse refusal(const std::string& text, const TuneSetting& setting, const std::string& instead)
{
    BadUse refused(quoted(text) + " is no value for " + setting.name + ": use " + instead);
    return refused;
}

} // namespace

void changeSetting(TunedAdapter adapter, const TuneSetting& setting, const std::string& text)
{
    if (!setting.write)
        throw BadUse(setting.name + " can only be read");
    const auto asked = setting.parse(text);
    if (!asked)
        throw refusal(text, setting, setting.typeInWords);
    if (setting.allowed)
        if (const TakenNumbers taken = setting.allowed(adapter); !taken.contain(asked->toDouble()))
            throw refusal(text, setting, taken.inWords());
    changeSetting(adapter, setting, *asked);
}

void changeSetting(TunedAdapter adapter, const TuneSetting& setting, const QJsonValue& asked)
{
    const QJsonValue before = setting.read(adapter);
    setting.write(adapter, asked);
    const QJsonValue kept = setting.read(adapter);
    if (kept == asked)
        return;
    const std::string refused = "the instrument did not take " + toText(asked) + " for " + setting.name;
    if (kept != before && !before.isNull())
        setting.write(adapter, before);
    const QJsonValue now = setting.read(adapter);
    throw Failure(now == before ? refused + " but " + shown(kept) + "; it holds " + shown(before) + " as before"
                                : refused + "; it held " + shown(before) + " before, holds " + shown(now)
                                      + " now, and did not take that back");
}

std::string allowedBy(TunedAdapter adapter, const TuneSetting& setting)
{
    return setting.allowed ? setting.allowed(adapter).inColumn() : setting.type;
}

std::string shown(const QJsonValue& value)
{
    return value.isNull() ? "none" : toText(value);
}

} // namespace tov::inline tools

#include "console/setting.h"

#include "console/number.h"

namespace tov::console {

namespace {

std::optional<QJsonValue> parseOnOff(const std::string& text)
{
    if (text == "on")
        return true;
    if (text == "off")
        return false;
    return {};
}

std::optional<QJsonValue> parseWholeNumber(const std::string& text)
{
    const auto number = parseNumber<int>(text);
    return number ? std::optional<QJsonValue>(*number) : std::nullopt;
}

} // namespace

const ValueType onOff{"on|off", parseOnOff};
const ValueType wholeNumber{"a whole number", parseWholeNumber};

QJsonValue parseValue(const ValueType& type, std::string_view setting, const std::string& text)
{
    if (const auto value = type.parse(text))
        return *value;
    throw CommandError(ExitStatus::BadUse, "'" + text + "' is no value for " + std::string(setting) + ": use "
                                               + std::string(type.accepted));
}

CommandError notTaken(std::string_view setting, const QJsonValue& asked, const QJsonValue& kept)
{
    return {ExitStatus::Failure, "the instrument did not take " + toText(asked) + " for " + std::string(setting)
                                     + " and holds " + toText(kept) + "; 'get' shows what it offers"};
}

} // namespace tov::console

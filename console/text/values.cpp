#include "console/text/values.h"

#include <QJsonArray>
#include <QString>

namespace tov::console {

std::string toText(const QJsonValue& value)
{
    if (value.isBool())
        return value.toBool() ? "on" : "off";
    if (value.isDouble())
        return QString::number(value.toDouble(), 'g', 15).toStdString();
    if (value.isArray()) {
        std::string list;
        const QJsonArray elements = value.toArray();
        for (const auto& element : elements)
            list.append(list.empty() ? "" : " ").append(toText(element));
        return list;
    }
    return value.toString().toStdString();
}

std::string hexadecimal(std::uint64_t number, int digits)
{
    return "0x" + QString::number(number, 16).toUpper().rightJustified(digits, '0').toStdString();
}

} // namespace tov::console

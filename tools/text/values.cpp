#include "tools/text/values.h"

#include <QJsonArray>
#include <QLocale>
#include <QString>

#include <cmath>

namespace tov::inline tools {

std::string toText(double number)
{
    const double size = std::abs(number);
    const bool isHandy = size == 0 || (size >= 1e-5 && size < 1e15);
    return QString::number(number, isHandy ? 'f' : 'g', QLocale::FloatingPointShortest).toStdString();
}

double asMeasured(double reading)
{
    return QString::number(reading, 'g', 7).toDouble();
}

std::string toText(const QJsonValue& value)
{
    if (value.isBool())
        return value.toBool() ? "on" : "off";
    if (value.isDouble())
        return toText(value.toDouble());
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

} // namespace tov::inline tools

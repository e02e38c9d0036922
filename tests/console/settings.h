#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace tov::testing {

// Another value that a setting takes, which is described as 'tune ls' does.
inline QString otherValue(const QJsonObject& setting)
{
    const QString allowed = setting["allowed"].toString();
    const QJsonValue value = setting["value"];
    if (allowed == "on|off")
        return value.toBool() ? "off" : "on";
    if (allowed == "FIRST..SECOND")
        return "2..3";
    if (const QStringList bounds = allowed.split(".."); bounds.size() == 2)
        return value.isNull() ? bounds[1]
                              : QString::number(value.toInt() + (value.toDouble() < bounds[1].toDouble() ? 1 : -1));
    if (allowed == "a whole number")
        return QString::number(value.toInt() + 1);
    if (allowed == "a number")
        return value.isNull()            ? QString("5e9")
               : value.toDouble() == 0.0 ? QString("0.5")
                                         : QString::number(value.toDouble() * 0.5, 'g', 17);
    return allowed.split(' ').last(); // a list
}

} // namespace tov::testing

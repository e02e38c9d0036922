#include "workbench/models/tuning.h"

#include <QJsonArray>
#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace tov::workbench {

using Plot = TuneSetting::Plot;

ReadModule readModule(const TuneModule& module, TunedAdapter adapter)
{
    ReadModule read;
    read.reserve(module.settings.size());
    for (const TuneSetting& setting : module.settings) {
        ReadSetting each{.value = setting.read(adapter), .allowed = {}};
        if (setting.allowed)
            each.allowed = setting.allowed(adapter);
        read.push_back(std::move(each));
    }
    return read;
}

QString nameOf(const TuneModule& module)
{
    return QString::fromUtf8(module.control->name);
}

QString shownValue(const QJsonValue& value)
{
    if (value.isDouble())
        return QLocale().toString(value.toDouble(), 'f', QLocale::FloatingPointShortest);
    if (!value.isArray())
        return QString::fromStdString(shown(value));
    QStringList each;
    for (const QJsonValue one : value.toArray())
        each.append(shownValue(one));
    return each.join(QStringLiteral("   "));
}

std::vector<PowerCurve> powerCurves(const TuneModule& module, const ReadModule& read)
{
    std::vector<PowerCurve> curves;
    for (std::size_t i = 0; i < read.size(); ++i) {
        const QJsonArray rows = read[i].value.toArray();
        if (module.settings[i].plot != Plot::PowerCodes || rows.isEmpty())
            continue;
        PowerCurve& curve = curves.emplace_back(QString::fromStdString(module.settings[i].name));
        curve.points.reserve(static_cast<std::size_t>(rows.size()));
        for (const QJsonValue row : rows)
            curve.points.push_back({row[0].toDouble(), row[1].toDouble()});
    }
    return curves;
}

std::vector<Band> bands(const TuneModule& module, const ReadModule& read)
{
    std::vector<Band> bands;
    for (std::size_t i = 0; i < read.size(); ++i)
        if (module.settings[i].plot == Plot::BandFrom && read[i].value.isDouble())
            bands.push_back({QString::fromStdString(module.settings[i].name), read[i].value.toDouble(), {}});
    std::ranges::sort(bands, {}, &Band::from);
    for (std::size_t i = 1; i < bands.size(); ++i)
        bands[i - 1].to = bands[i].from;
    return bands;
}

} // namespace tov::workbench

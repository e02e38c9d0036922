#include "console/whole/part.h"
#include "tools/tuning/tuning.h"

#include <cmath>
#include <optional>
#include <utility>

namespace tov::console {

using namespace Qt::StringLiterals;

namespace {

using host::InstrumentSession;

QJsonObject rowOf(const TuneModule& module, const QJsonObject& rest)
{
    QJsonObject row = rest;
    row["module"_L1] = QString::fromUtf8(module.control->name);
    return row;
}

QJsonObject readSetting(InstrumentSession& session, const TuneModule& module, const TuneSetting& setting)
{
    QJsonObject row = rowOf(module, {{"setting"_L1, QString::fromStdString(setting.name)},
                                     {"unit"_L1, QString::fromStdString(setting.unit)}});
    try {
        row["value"_L1] = setting.read(module.adapter(session));
    } catch (const std::exception& error) {
        row["error"_L1] = QString::fromStdString(error.what());
    }
    return row;
}

// Those that can be written, or the others. An absent module is one row.
QJsonArray readSettings(InstrumentSession& session, bool writable)
{
    QJsonArray rows;
    for (const TuneModule& module : tuneModules()) {
        if (!session.isPresent(*module.control))
            rows.append(rowOf(module, {{"error"_L1, QLatin1StringView(missingControl)}}));
        else
            for (const TuneSetting& setting : module.settings)
                if ((setting.write != nullptr) == writable)
                    rows.append(readSetting(session, module, setting));
    }
    return rows;
}

// As a person writes it, with all digits.
std::string written(const QJsonValue& value)
{
    if (value.isArray())
        return written(value[0]) + ".." + written(value[1]);
    return value.isDouble() ? QString::number(value.toDouble(), 'g', 17).toStdString() : shown(value);
}

std::pair<const TuneModule&, const TuneSetting&> settingOf(const SavedRow& saved)
{
    const std::string moduleName = saved.text("module").toStdString();
    const std::string settingName = saved.text("setting").toStdString();
    try {
        const TuneModule& module = tuneModuleNamed(moduleName);
        const TuneSetting& setting = tuneSettingNamed(module, settingName);
        if (!setting.write)
            saved.fail("setting", "one that can be written");
        return {module, setting};
    } catch (const BadUse& error) {
        saved.fail("setting", std::string("one that this program knows: ") + error.what());
    }
}

Restoring restoreSetting(const SavedRow& saved, const QJsonObject& now)
{
    const auto [module, setting] = settingOf(saved);
    const QJsonValue value = saved["value"];
    if (value.isNull())
        return {.act = nullptr, .refusal = "there is no way back to none"};
    const std::optional<QJsonValue> asked = setting.parse(written(value));
    if (!asked)
        saved.fail("value", setting.type);
    if (now.isEmpty())
        return {.act = nullptr, .refusal = missingControl};
    return {.act = [&module, &setting,
                    asked](InstrumentSession& session) { setting.write(module.adapter(session), *asked); },
            .refusal = {}};
}

} // namespace

std::vector<Part> settingsParts()
{
    return {{.name = "settings",
             .title = "Settings of the hardware modules",
             .keys = {"module", "setting"},
             .compared = {"value"},
             .told = {"unit"},
             .read = [](InstrumentSession& session) { return readSettings(session, true); },
             .restored = {"value"},
             .restore = restoreSetting},
            {.name = "properties",
             .title = "Properties of the hardware modules",
             .keys = {"module", "setting"},
             .compared = {"value"},
             .told = {"unit"},
             .read = [](InstrumentSession& session) { return readSettings(session, false); }}};
}

} // namespace tov::console

#include "console/whole/part.h"
#include "tools/text/correctionname.h"
#include "tools/text/values.h"

#include <algorithm>

namespace tov::console {

using namespace Qt::StringLiterals;

namespace {

using host::InstrumentSession;

Part termsRecords()
{
    return {.name = "terms-records",
            .title = "Records of the system error terms",
            .keys = {},
            .compared = {"key", "value", "number"},
            .told = {},
            .read = [](InstrumentSession& session) {
                QJsonArray rows;
                for (const auto& record : present(session, host::controls::systemTerms)->termsRecords())
                    rows.append(QJsonObject{{"key"_L1, QString::number(record.key)},
                                            {"value"_L1, record.value},
                                            {"number"_L1, static_cast<qint64>(record.number)}});
                return rows;
            }};
}

Part termsFlag()
{
    return {.name = "terms-flag",
            .title = "Flag of the system error terms",
            .keys = {},
            .compared = {"flag"},
            .told = {},
            .read = [](InstrumentSession& session) {
                return QJsonArray{
                    QJsonObject{{"flag"_L1, present(session, host::controls::systemTerms)->systemTermsFlag()}}};
            }};
}

template <typename Adapter>
Part plan(const char* name, const char* title, const host::Control<Adapter>& kind)
{
    return {.name = name,
            .title = title,
            .keys = {},
            .compared = {"start", "stop", "points"},
            .told = {},
            .read =
                [&kind](InstrumentSession& session) {
                    QJsonArray rows;
                    for (const auto& segment : present(session, kind)->frequencyPlan().segments)
                        rows.append(QJsonObject{
                            {"start"_L1, segment.start}, {"stop"_L1, segment.stop}, {"points"_L1, segment.points}});
                    return rows;
                },
            .headings = {{"start", "start (Hz)"}, {"stop", "stop (Hz)"}}};
}

QJsonArray readCorrections(InstrumentSession& session)
{
    const auto control = present(session, host::controls::factoryCorrections);
    QJsonArray rows;
    for (const auto correction : control->supported())
        rows.append(QJsonObject{{"correction"_L1, QString::fromStdString(nameOf(correction))},
                                {"valid"_L1, control->isValid(correction)},
                                {"enabled"_L1, control->isEnabled(correction)},
                                {"modifiable"_L1, control->isModifiable(correction)}});
    return rows;
}

void enable(InstrumentSession& session, const std::string& name, bool enabled)
{
    const auto control = present(session, host::controls::factoryCorrections);
    for (const auto correction : control->supported())
        if (nameOf(correction) == name)
            control->setEnabled(correction, enabled);
}

Part corrections()
{
    return {.name = "corrections",
            .title = "Factory corrections",
            .keys = {"correction"},
            .compared = {"valid", "enabled", "modifiable"},
            .told = {},
            .read = readCorrections,
            .restored = {"enabled"},
            .restore = [](const SavedRow& saved, const QJsonObject& now) {
                const std::string name = saved.text("correction").toStdString();
                const bool enabled = saved.flag("enabled");
                Restoring restoring{
                    .act = [name, enabled](InstrumentSession& session) { enable(session, name, enabled); },
                    .refusal = {}};
                if (now.isEmpty())
                    restoring.refusal = "the instrument has no such correction";
                else if (!now["valid"_L1].toBool())
                    restoring.refusal = "its data are not valid";
                else if (!now["modifiable"_L1].toBool())
                    restoring.refusal = "it is not modifiable";
                return restoring;
            }};
}

Part temperatures()
{
    return {.name = "temperatures",
            .title = "Temperatures",
            .keys = {"module"},
            .compared = {},
            .told = {"temperature"},
            .read =
                [](InstrumentSession& session) {
                    const auto control = present(session, host::controls::temperature);
                    QJsonArray rows;
                    for (const auto& module : control->modulesTemperature())
                        rows.append(QJsonObject{{"module"_L1, module.name},
                                                {"temperature"_L1, asMeasured(module.temperature)}});
                    rows.append(QJsonObject{{"module"_L1, "overall"_L1},
                                            {"temperature"_L1, asMeasured(control->temperature())}});
                    return rows;
                },
            .headings = {{"temperature", "temperature (°C)"}}};
}

} // namespace

Part controlsPart()
{
    return {.name = "controls",
            .title = "Controls",
            .keys = {"control"},
            .compared = {"state"},
            .told = {"registry-key", "sdk-key"},
            .read = [](InstrumentSession& session) {
                const auto text = [](std::uint64_t key) { return QString::fromStdString(hexadecimal(key, 16)); };
                QJsonArray rows;
                for (const host::ControlName& control : host::controls::all)
                    rows.append(QJsonObject{{"control"_L1, QString::fromUtf8(control.name)},
                                            {"state"_L1, session.isPresent(control) ? "present"_L1 : "missing"_L1},
                                            {"registry-key"_L1, text(control.keys.registry)},
                                            {"sdk-key"_L1, text(control.keys.sdk.value)}});
                return rows;
            }};
}

std::vector<Part> storedParts()
{
    return {termsRecords(),
            termsFlag(),
            plan("ifsw-plan", "Frequency plan of the IF switch", host::controls::ifswCalibration),
            plan("power-cal-plan", "Frequency plan of the factory power", host::controls::factoryPowerCalibration),
            corrections(),
            temperatures()};
}

} // namespace tov::console

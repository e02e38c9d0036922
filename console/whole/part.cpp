#include "console/whole/part.h"

#include "tools/text/named.h"
#include "tools/text/values.h"
#include "tools/tuning/tuning.h"

#include <QJsonDocument>

namespace tov::console {

using namespace Qt::StringLiterals;

const std::vector<Part>& parts()
{
    static const std::vector<Part> all = [] {
        std::vector<Part> joined{controlsPart()};
        for (const auto& others : {memoryParts(), storedParts(), settingsParts()})
            joined.insert(joined.end(), others.begin(), others.end());
        return joined;
    }();
    return all;
}

const std::vector<const Part*>& restorableParts()
{
    static const std::vector<const Part*> restorable = [] {
        std::vector<const Part*> found;
        for (const Part& part : parts())
            if (part.restore)
                found.push_back(&part);
        return found;
    }();
    return restorable;
}

const Part& restorablePartNamed(const std::string& name)
{
    return *named(restorableParts(), name, "part", [](const Part* part) { return part->name; });
}

QJsonValue readPart(host::InstrumentSession& session, const Part& part)
try {
    // As a file would hold it, so that what was read now and what was read from a file can be compared.
    return QJsonDocument::fromJson(QJsonDocument(part.read(session)).toJson()).array();
} catch (const std::exception& error) { // of the instrument's too, which may throw
    return QJsonObject{{"error"_L1, QString::fromStdString(error.what())}};
}

std::string errorOf(const QJsonValue& value)
{
    return value["error"_L1].toString().toStdString();
}

std::string unread(const QJsonValue& part)
{
    if (const std::string error = errorOf(part); !error.empty())
        return error == missingControl ? "" : error;
    const QJsonArray rows = part.toArray();
    for (const auto& row : rows)
        if (const std::string error = errorOf(row); !error.empty() && error != missingControl)
            return error;
    return {};
}

std::string itemOf(const Part& part, const QJsonObject& row)
{
    std::string item;
    for (const std::string& key : part.keys)
        if (const std::string text = cell(row[QString::fromStdString(key)]); !text.empty())
            item.append(item.empty() ? "" : "/").append(text);
    return item;
}

std::string cell(const QJsonValue& value)
{
    if (value.isUndefined())
        return {};
    if (value.isObject())
        return toText(value["bytes"_L1]) + " bytes, SHA-256 " + value["sha256"_L1].toString().left(12).toStdString()
               + "...";
    return shown(value);
}

} // namespace tov::console

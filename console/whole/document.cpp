#include "console/whole/document.h"

#include "console/terminal/spinner.h"
#include "host/loadedlibrary.h"
#include "service/version.h"
#include "tools/files/localfile.h"

#include <QJsonDocument>
#include <QJsonParseError>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <array>

namespace tov::console {

using namespace Qt::StringLiterals;

namespace {

constexpr int formatVersion = 1;
constexpr auto reportFormat = "service-console report"_L1;
constexpr auto backupFormat = "service-console backup"_L1;

[[noreturn]] void fail(const std::string& path, const std::string& where, const std::string& what)
{
    throw Failure(path + ", " + where + ": " + what);
}

constexpr std::array keysOfDocument{
    "format"_L1,           "version"_L1,    "time"_L1,          "program"_L1, "library"_L1, "qt"_L1, "provider"_L1,
    "provider-version"_L1, "instrument"_L1, "instrument-id"_L1, "parts"_L1,   "command"_L1}; // of a shell

void requirePart(const std::string& path, const QString& name, const QJsonValue& value)
{
    const std::string place = "parts." + name.toStdString();
    const auto known = [&](const Part& part) { return part.name == name.toStdString(); };
    const auto part = std::ranges::find_if(parts(), known);
    if (part == parts().end())
        fail(path, place, "expected another name, which is one of the format");
    if (value.isObject() && !errorOf(value).empty())
        return;
    if (!value.isArray())
        fail(path, place, "expected a list");
    std::vector<std::string> columns = columnsOf(*part);
    columns.emplace_back("error");
    const QJsonArray rows = value.toArray();
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const std::string row = place + "[" + std::to_string(i) + "]";
        if (!rows[i].isObject())
            fail(path, row, "expected an object");
        const QStringList keys = rows[i].toObject().keys();
        for (const QString& key : keys)
            if (std::ranges::find(columns, key.toStdString()) == columns.end())
                fail(path, row + "." + key.toStdString(), "expected another name, which is one of the format");
    }
}

} // namespace

QJsonObject readInstrument(ConsoleSession& console, DocumentKind kind)
{
    host::InstrumentSession& session = console.session();
    const host::ProviderDescription& provider = console.choice().provider;
    const auto& [id, model, serialNumber, description] = console.instrument();
    const bool isReport = kind == DocumentKind::Report;

    QJsonObject read;
    for (const Part& part : parts()) {
        Spinner spinner("reading: " + part.title);
        spinner.turn();
        const QJsonValue rows = readPart(session, part);
        read[QString::fromStdString(part.name)] = isReport ? withoutContents(rows) : rows;
    }
    console.waitUntilQuiet();
    return {{"format"_L1, isReport ? reportFormat : backupFormat},
            {"version"_L1, formatVersion},
            {"time"_L1, QString::fromStdString(console.timestamp())},
            {"program"_L1, QLatin1StringView(devices::service::version)},
            {"library"_L1, host::loadedLibraryPath()},
            {"qt"_L1, QLatin1StringView(qVersion())},
            {"provider"_L1, provider.name},
            {"provider-version"_L1, provider.version},
            {"instrument"_L1, model.isEmpty() ? id : model},
            {"instrument-id"_L1, id},
            {"parts"_L1, read}};
}

QJsonObject readDocument(const std::string& path)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(readLocalFile(path, 2 * muchMemory), &error);
    if (error.error != QJsonParseError::NoError)
        fail(path, "byte " + std::to_string(error.offset), error.errorString().toStdString());
    const QJsonObject object = document.object();
    const QJsonValue format = object["format"_L1];
    if (format != reportFormat && format != backupFormat)
        fail(path, "format", "this is no report and no backup of service-console");
    const QJsonValue version = object["version"_L1];
    if (version.toDouble() > formatVersion)
        fail(path, "version", "a newer service-console wrote this");
    if (version != formatVersion)
        fail(path, "version", "expected " + std::to_string(formatVersion));
    const QStringList keys = object.keys();
    for (const QString& key : keys)
        if (std::ranges::find(keysOfDocument, key) == keysOfDocument.end())
            fail(path, key.toStdString(), "expected another name, which is one of the format");
    if (!object["parts"_L1].isObject())
        fail(path, "parts", "expected an object");
    const QJsonObject read = object["parts"_L1].toObject();
    for (auto part = read.begin(); part != read.end(); ++part)
        requirePart(path, part.key(), part.value());
    return object;
}

bool isBackup(const QJsonObject& document)
{
    return document["format"_L1] == backupFormat;
}

QJsonValue partOf(const QJsonObject& document, const Part& part)
{
    return document["parts"_L1][QString::fromStdString(part.name)];
}

std::vector<std::pair<std::string, std::string>> headerOf(const QJsonObject& document)
{
    const auto text = [&](QLatin1StringView name) { return document[name].toString().toStdString(); };
    return {{"Time", text("time"_L1)},
            {"Instrument", text("instrument"_L1)},
            {"Provider", text("provider"_L1) + " " + text("provider-version"_L1)},
            {"service-console", text("program"_L1)},
            {"DevicesService", text("library"_L1)},
            {"Qt", text("qt"_L1)}};
}

std::vector<std::string> columnsOf(const Part& part)
{
    std::vector<std::string> columns = part.keys;
    columns.insert(columns.end(), part.compared.begin(), part.compared.end());
    columns.insert(columns.end(), part.told.begin(), part.told.end());
    return columns;
}

std::string headingOf(const Part& part, const std::string& column)
{
    const auto found = part.headings.find(column);
    return found == part.headings.end() ? column : found->second;
}

std::vector<std::string> cellsOf(const Part& part, const QJsonObject& row)
{
    std::vector<std::string> cells;
    for (const std::string& column : columnsOf(part))
        cells.push_back(cell(row[QString::fromStdString(column)]));
    if (const std::string error = errorOf(row); !error.empty())
        cells[std::min(part.keys.size(), cells.size() - 1)] = error;
    return cells;
}

std::string documentText(const QJsonObject& document, std::size_t width)
{
    const TableForm form{.columns = {}, .filter = {}, .width = width};
    std::string text;
    for (const auto& [name, value] : headerOf(document))
        text.append(name).append(17 - name.size(), ' ').append(value).append("\n");
    for (const Part& part : parts()) {
        const QJsonValue value = partOf(document, part);
        text.append("\n").append(part.title);
        if (const std::string error = errorOf(value); !error.empty()) {
            text.append(": ").append(error).append("\n");
            continue;
        }
        std::vector<Column> columns;
        for (const std::string& name : columnsOf(part))
            columns.emplace_back(headingOf(part, name), name);
        Table table(std::move(columns));
        for (const auto& row : value.toArray()) {
            const auto cells = cellsOf(part, row.toObject());
            table.addRow({cells.begin(), cells.end()});
        }
        text.append("\n").append(value.toArray().isEmpty() ? "none\n" : table.toText(form));
    }
    return text;
}

} // namespace tov::console

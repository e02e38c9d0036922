#include "tools/files/termsfile.h"

#include "tools/errors.h"
#include "tools/files/localfile.h"
#include "tools/files/timestamp.h"
#include "tools/text/number.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <utility>

namespace tov::inline tools {

const char* const termsFileFormat = R"(FILE is JSON:
  { "time": "2026-01-31T12:00:00Z",       when the terms were measured
    "parameter": 1.0,
    "records": [ { "key": 1, "value": 0.5, "number": 2 } ],      "key" may be a text
    "frequencies": [ 1e9, 2e9 ],          in Hz
    "ports": [ { "port": 1,               [real, imaginary] for each frequency
        "directivity": [ [0, 0], [0, 0] ], "source-match": [...], "reflection-tracking": [...] } ],
    "paths": [ { "source-port": 1, "receiver-port": 2,
        "load-match": [...], "transmission-tracking": [...], "isolation": [...] } ] }
Everything but "time" may be left out. Without records the terms are stored without a list.
)";

namespace {

using TermsRecord = devices::service::ISystemTermsControl::TermsRecord;

/// Reads one file and knows its name for what it has to say of it.
class TermsReader
{
public:
    explicit TermsReader(std::string file)
        : m_file(std::move(file))
    {
    }

    TermsFile read() const
    {
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(readLocalFile(m_file), &error);
        if (error.error != QJsonParseError::NoError)
            fail("byte " + std::to_string(error.offset), error.errorString().toStdString());
        if (!document.isObject())
            fail("the beginning", "expected an object");
        const QJsonObject object = document.object();
        expectKeys(object, {"time", "parameter", "records", "frequencies", "ports", "paths"}, "");

        TermsFile file;
        const auto time = parseTimestamp(object["time"].toString());
        if (!time)
            fail("time", std::string("expected ") + timestampForm);
        file.time = *time;
        file.parameter = object.contains("parameter") ? number(object["parameter"], "parameter") : 0.0;
        file.records =
            list<TermsRecord>(object, "records", "", [this](const QJsonObject& record, const std::string& at) {
                expectKeys(record, {"key", "value", "number"}, at + ".");
                return TermsRecord{wholeNumber<std::int64_t>(record["key"], at + ".key"),
                                   number(record["value"], at + ".value"),
                                   wholeNumber<std::int64_t>(record["number"], at + ".number")};
            });
        const QJsonArray frequencies = array(object, "frequencies", "");
        for (qsizetype i = 0; i < frequencies.size(); ++i)
            file.terms.frequencies.push_back(number(frequencies[i], "frequencies[" + std::to_string(i) + "]"));
        const auto count = file.terms.frequencies.size();

        file.terms.ports =
            list<vna::ErrorTerms::Port>(object, "ports", "", [&](const QJsonObject& port, const std::string& at) {
                expectKeys(port, {"port", "directivity", "source-match", "reflection-tracking"}, at + ".");
                return vna::ErrorTerms::Port{
                    wholeNumber<int>(port["port"], at + ".port"), values(port, "directivity", at, count),
                    values(port, "source-match", at, count), values(port, "reflection-tracking", at, count)};
            });
        file.terms.portPairs =
            list<vna::ErrorTerms::PortPair>(object, "paths", "", [&](const QJsonObject& path, const std::string& at) {
                expectKeys(path, {"source-port", "receiver-port", "load-match", "transmission-tracking", "isolation"},
                           at + ".");
                return vna::ErrorTerms::PortPair{wholeNumber<int>(path["source-port"], at + ".source-port"),
                                                 wholeNumber<int>(path["receiver-port"], at + ".receiver-port"),
                                                 values(path, "load-match", at, count),
                                                 values(path, "transmission-tracking", at, count),
                                                 values(path, "isolation", at, count)};
            });
        return file;
    }

private:
    [[noreturn]] void fail(const std::string& where, const std::string& what) const
    {
        throw Failure(m_file + ", " + where + ": " + what);
    }

    // A name with a slip of the pen would be left out without a word.
    void expectKeys(const QJsonObject& object, std::initializer_list<const char*> known, const std::string& at) const
    {
        for (const QString& key : object.keys())
            if (std::ranges::find(known, key.toStdString()) == known.end())
                fail(at + key.toStdString(), "expected another name, which is one of the format");
    }

    double number(const QJsonValue& value, const std::string& where) const
    {
        if (!value.isDouble())
            fail(where, "expected a number");
        return value.toDouble();
    }

    // A number, or a text of one: JSON numbers are exact up to 53 bits only, and 'terms ls' shows keys as texts.
    template <typename Number>
    Number wholeNumber(const QJsonValue& value, const std::string& where) const
    {
        constexpr double exact = 9007199254740992.0;
        const double asDouble = value.toDouble();
        const std::string text = value.isDouble() && std::abs(asDouble) < exact && asDouble == std::trunc(asDouble)
                                     ? std::to_string(static_cast<std::int64_t>(asDouble))
                                     : value.toString().toStdString();
        if (const auto parsed = parseNumber<Number>(text))
            return *parsed;
        fail(where, "expected a whole number that fits, as a text if it has more than 53 bits");
    }

    QJsonArray array(const QJsonObject& object, const char* name, const std::string& at) const
    {
        const QJsonValue value = object[QLatin1StringView(name)];
        if (!value.isUndefined() && !value.isArray())
            fail(at + name, "expected a list");
        return value.toArray();
    }

    template <typename Element, typename Read>
    std::vector<Element> list(const QJsonObject& object, const char* name, const std::string& at, Read read) const
    {
        std::vector<Element> elements;
        const QJsonArray values = array(object, name, at);
        for (qsizetype i = 0; i < values.size(); ++i) {
            const std::string where = at + name + "[" + std::to_string(i) + "]";
            if (!values[i].isObject())
                fail(where, "expected an object");
            elements.push_back(read(values[i].toObject(), where));
        }
        return elements;
    }

    vna::ErrorTerms::Values values(const QJsonObject& object, const char* name, const std::string& at,
                                   std::size_t count) const
    {
        const QJsonArray list = array(object, name, at + ".");
        vna::ErrorTerms::Values converted;
        for (qsizetype i = 0; i < list.size(); ++i) {
            const std::string where = at + "." + name + "[" + std::to_string(i) + "]";
            const QJsonArray pair = list[i].toArray();
            if (pair.size() != 2)
                fail(where, "expected [real, imaginary]");
            converted.emplace_back(number(pair[0], where), number(pair[1], where));
        }
        if (converted.size() != count)
            fail(at + "." + name, "expected a value for each of the " + std::to_string(count) + " frequencies");
        return converted;
    }

    std::string m_file;
};

} // namespace

TermsFile readTermsFile(const std::string& path)
{
    return TermsReader(path).read();
}

} // namespace tov::inline tools

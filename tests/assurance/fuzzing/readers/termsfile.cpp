// The file of system error terms: what is read and written again reads back the same.

#include "tools/files/termsfile.h"

#include "fuzzer.h"
#include "readers/memoryfile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdint>

namespace tov::testing {

namespace {

using namespace Qt::StringLiterals;

QJsonArray written(const vna::ErrorTerms::Values& values)
{
    QJsonArray pairs;
    for (const auto& value : values)
        pairs.append(QJsonArray{value.real(), value.imag()});
    return pairs;
}

QByteArray written(const tools::TermsFile& file)
{
    QJsonArray records;
    for (const auto& record : file.records)
        records.append(QJsonObject{{u"key"_s, QString::number(record.key)},
                                   {u"value"_s, record.value},
                                   {u"number"_s, QString::number(record.number)}});
    QJsonArray frequencies;
    for (const double frequency : file.terms.frequencies)
        frequencies.append(frequency);
    QJsonArray ports;
    for (const auto& port : file.terms.ports)
        ports.append(QJsonObject{{u"port"_s, port.port},
                                 {u"directivity"_s, written(port.directivity)},
                                 {u"source-match"_s, written(port.sourceMatch)},
                                 {u"reflection-tracking"_s, written(port.reflectionTracking)}});
    QJsonArray paths;
    for (const auto& path : file.terms.portPairs)
        paths.append(QJsonObject{{u"source-port"_s, path.sourcePort},
                                 {u"receiver-port"_s, path.receiverPort},
                                 {u"load-match"_s, written(path.loadMatch)},
                                 {u"transmission-tracking"_s, written(path.transmissionTracking)},
                                 {u"isolation"_s, written(path.isolation)}});
    const QJsonObject object{{u"time"_s, file.time.toUTC().toString(Qt::ISODateWithMs)},
                             {u"parameter"_s, file.parameter},
                             {u"records"_s, records},
                             {u"frequencies"_s, frequencies},
                             {u"ports"_s, ports},
                             {u"paths"_s, paths}};
    return QJsonDocument(object).toJson();
}

} // namespace

} // namespace tov::testing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tov;
    using namespace tov::testing;
    const auto file =
        readFrom(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)), tools::readTermsFile);
    if (!file)
        return 0;
    const QByteArray text = written(*file);
    tools::TermsFile damaged = *file;
    if (isWritingDamaged() && damaged.terms.frequencies.size() == 2)
        damaged.terms.frequencies.front() += 1;
    const auto again = readFrom(written(damaged), tools::readTermsFile);
    require(again && written(*again) == text, "terms that are written again read back the same");
    return 0;
}

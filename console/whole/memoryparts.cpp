#include "console/session/results.h"
#include "console/whole/part.h"
#include "tools/text/bytes.h"
#include "tools/text/values.h"

#include <cstddef>
#include <expected>

namespace tov::console {

using namespace Qt::StringLiterals;

namespace {

using devices::service::IFileMemoryControl;
using devices::service::IUsbIdControl;
using host::InstrumentSession;

template <typename Value, typename Error>
Value orFail(const std::expected<Value, Error>& result, const char* what)
{
    if (!result)
        throw Failure(what);
    if constexpr (!std::is_void_v<Value>)
        return *result;
}

Part memory()
{
    return {.name = "memory",
            .title = "Memory",
            .keys = {},
            .compared = {"contents"},
            .told = {},
            .read =
                [](InstrumentSession& session) {
                    const auto contents =
                        orFail(present(session, host::controls::memoryOperations)->read(), "cannot be read");
                    return QJsonArray{QJsonObject{{"contents"_L1, contentsToJson(toByteArray(contents))}}};
                },
            .restored = {"contents"},
            .restore =
                [](const SavedRow& saved, const QJsonObject& now) {
                    const QByteArray bytes = saved.contents("contents");
                    // Writing begins with erasing all of it, also what lies behind these bytes.
                    if (const QJsonValue size = now["contents"_L1]["bytes"_L1];
                        size.isDouble() && size.toInteger() != bytes.size())
                        return Restoring{.act = nullptr,
                                         .refusal = "another size: " + std::to_string(size.toInteger()) + " instead of "
                                                    + std::to_string(bytes.size()) + " bytes"};
                    return Restoring{
                        .act =
                            [bytes](InstrumentSession& session) {
                                orFail(present(session, host::controls::memoryOperations)->write(toBytes(bytes)),
                                       "cannot be written");
                            },
                        .refusal = {}};
                }};
}

QJsonArray readFiles(InstrumentSession& session)
{
    const auto control = present(session, host::controls::fileMemory);
    QJsonArray rows;
    for (const auto& file : valueOf(control->fileList())) {
        QJsonObject row{{"name"_L1, file.name}, {"word1"_L1, file.word1}, {"word2"_L1, file.word2}};
        if (const auto contents = control->readFile(file))
            row["contents"_L1] = contentsToJson(*contents);
        else
            row["error"_L1] = contents.error();
        rows.append(row);
    }
    return rows;
}

Part files()
{
    return {
        .name = "files",
        .title = "Files",
        .keys = {"name"},
        .compared = {"contents"},
        .told = {"word1", "word2"},
        .read = readFiles,
        .restored = {"contents"},
        .restore =
            [](const SavedRow& saved, const QJsonObject& /*now*/) {
                return Restoring{
                    .act =
                        [name = saved.text("name"), contents = saved.contents("contents")](InstrumentSession& session) {
                            valueOf(present(session, host::controls::fileMemory)->writeFile(name, contents));
                        },
                    .refusal = {}};
            },
        .remove =
            [](InstrumentSession& session, const QJsonObject& now) {
                const IFileMemoryControl::FileInfo file{now["name"_L1].toString(), now["word1"_L1].toInt(),
                                                        now["word2"_L1].toInt()};
                valueOf(present(session, host::controls::fileMemory)->deleteFile(file));
            },
        .headings = {{"word1", "bytes"}}};
}

Part space()
{
    return {.name = "space",
            .title = "Room for files",
            .keys = {},
            .compared = {},
            .told = {"value1", "value2", "value3"},
            .read =
                [](InstrumentSession& session) {
                    const auto space = valueOf(present(session, host::controls::fileMemory)->spaceInfo());
                    return QJsonArray{QJsonObject{{"value1"_L1, QString::number(space.value1)},
                                                  {"value2"_L1, QString::number(space.value2)},
                                                  {"value3"_L1, QString::number(space.value3)}}};
                },
            .headings = {{"value1", "capacity in bytes"}, {"value2", "used"}, {"value3", "free"}}};
}

Part serialNumber()
{
    return {.name = "serial-number",
            .title = "Serial number",
            .keys = {},
            .compared = {"serial-number"},
            .told = {},
            .read =
                [](InstrumentSession& session) {
                    const auto number =
                        orFail(present(session, host::controls::serialNumber)->serialNumber(), "cannot be read");
                    return QJsonArray{QJsonObject{{"serial-number"_L1, static_cast<qint64>(number)}}};
                },
            .restored = {"serial-number"},
            .restore =
                [](const SavedRow& saved, const QJsonObject& /*now*/) {
                    return Restoring{
                        .act =
                            [number = saved.number<unsigned int>("serial-number")](InstrumentSession& session) {
                                orFail(present(session, host::controls::serialNumber)->writeSerialNumber(number),
                                       "cannot be written");
                            },
                        .refusal = {}};
                }};
}

QJsonObject toJson(const IUsbIdControl::UsbId& id)
{
    const auto text = [](std::uint64_t number, int digits) { // as JSON has no 64-bit numbers
        return QString::fromStdString(hexadecimal(number, digits));
    };
    return {{"id1"_L1, text(id.id1, 4)},
            {"id2"_L1, text(id.id2, 4)},
            {"id3"_L1, text(id.id3, 4)},
            {"model"_L1, QString::fromStdString(id.modelName)},
            {"tag"_L1, id.tag},
            {"data1"_L1, text(id.data1, 16)},
            {"data2"_L1, text(id.data2, 16)}};
}

Part usbId()
{
    return {.name = "usb-id",
            .title = "USB identifier",
            .keys = {},
            .compared = {"id1", "id2", "id3", "model", "tag", "data1", "data2"},
            .told = {},
            .read =
                [](InstrumentSession& session) {
                    return QJsonArray{toJson(present(session, host::controls::usbId)->usbId())};
                },
            .restored = {"id1", "id2", "id3"},
            .restore =
                [](const SavedRow& saved, const QJsonObject& /*now*/) {
                    IUsbIdControl::UsbId id;
                    id.id1 = saved.number<std::uint16_t>("id1");
                    id.id2 = saved.number<std::uint16_t>("id2");
                    id.id3 = saved.number<std::uint16_t>("id3");
                    return Restoring{.act =
                                         [id](InstrumentSession& session) {
                                             if (!present(session, host::controls::usbId)->writeUsbId(id))
                                                 throw Failure("cannot be written");
                                         },
                                     .refusal = {}};
                }};
}

Part usbIds()
{
    return {.name = "usb-ids",
            .title = "USB identifiers that there are",
            .keys = {},
            .compared = {"id1", "id2", "id3", "model", "tag", "data1", "data2"},
            .told = {},
            .read = [](InstrumentSession& session) {
                QJsonArray rows;
                for (const auto& id : present(session, host::controls::usbId)->usbIds())
                    rows.append(toJson(id));
                return rows;
            }};
}

QJsonArray readPotentiometers(InstrumentSession& session)
{
    const auto control = present(session, host::controls::potentiometers);
    QJsonArray rows;
    for (const auto& potentiometer : control->potentiometers()) {
        QJsonObject row{{"index"_L1, rows.size()},
                        {"name"_L1, QString::fromStdString(potentiometer.name)},
                        {"word1"_L1, potentiometer.word1},
                        {"word2"_L1, potentiometer.word2}};
        if (const auto value = control->readFromEeprom(static_cast<std::size_t>(rows.size())))
            row["eeprom"_L1] = *value;
        else
            row["error"_L1] = "cannot be read"_L1;
        rows.append(row);
    }
    return rows;
}

Part potentiometers()
{
    return {.name = "potentiometers",
            .title = "Potentiometers",
            .keys = {"index", "name"},
            .compared = {"eeprom", "word1", "word2"},
            .told = {},
            .read = readPotentiometers,
            .restored = {"eeprom"},
            .restore =
                [](const SavedRow& saved, const QJsonObject& now) {
                    const auto index = saved.number<std::size_t>("index");
                    const auto value = saved.number<int>("eeprom");
                    if (now.isEmpty())
                        return Restoring{.act = nullptr, .refusal = "the instrument has no such potentiometer"};
                    return Restoring{
                        .act =
                            [index, value](InstrumentSession& session) {
                                orFail(present(session, host::controls::potentiometers)->writeToEeprom(index, value),
                                       "cannot be written");
                            },
                        .refusal = {}};
                },
            .headings = {{"word1", "min"}, {"word2", "max"}}};
}

} // namespace

std::vector<Part> memoryParts()
{
    return {memory(), files(), space(), serialNumber(), usbId(), usbIds(), potentiometers()};
}

} // namespace tov::console

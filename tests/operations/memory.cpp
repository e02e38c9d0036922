#include "countingobserver.h"
#include "operations/operations.h"
#include "operations/row.h"
#include "operations/shown.h"
#include "service/memory/sdkfilememorycontrol.h"
#include "service/memory/sdkmemoryoperationscontrol.h"
#include "service/memory/sdkmemoryusbid.h"
#include "service/memory/sdkpotentiometerscontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"
#include "service/memory/sdksystemtermscontrol.h"
#include "testing/fakefilememorycontrol.h"
#include "testing/fakememoryoperationscontrol.h"
#include "testing/fakememoryserialnumbercontrol.h"
#include "testing/fakememoryusbidcontrol.h"
#include "testing/fakepotentiometerscontrol.h"
#include "testing/fakesystemtermscontrol.h"

#include <QDateTime>
#include <QStringList>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace tov::testing {

using namespace devices::service;

namespace {

std::string shown(bool result)
{
    return result ? "done" : "failed";
}

using SdkFiles = sdk::service::IFileMemoryControl;
using SdkUsbId = sdk::service::IMemoryUsbIdControl::UsbId;
using SdkPotentiometer = sdk::service::IPotentiometersControl::PotentiometerInfo;
using SdkRecord = sdk::service::ISystemTermsControl::TermsRecord;

std::string shown(const IUsbIdControl::UsbId& id)
{
    return QString("%1 %2 %3 '%4' %5 %6 %7")
        .arg(id.id1)
        .arg(id.id2)
        .arg(id.id3)
        .arg(QString::fromStdString(id.modelName))
        .arg(id.tag)
        .arg(id.data1)
        .arg(id.data2)
        .toStdString();
}

std::string shown(const PotentiometerInfo& info)
{
    return info.name + ' ' + std::to_string(info.word1) + ' ' + std::to_string(info.word2);
}

std::string shown(const ISystemTermsControl::TermsRecord& record)
{
    return std::to_string(record.key) + ' ' + exactly(record.value) + ' ' + std::to_string(record.number);
}

template <typename Element>
std::vector<std::string> each(const std::vector<Element>& list)
{
    std::vector<std::string> texts;
    for (const Element& element : list)
        texts.push_back(shown(element));
    return texts;
}

using Texts = std::vector<std::string>;

/// The observers of an adapter that is itself an observer of the SDK's: the SDK has nothing to do with their coming and
/// going.
template <typename Adapter, typename Interface>
std::vector<Row<Adapter>> observing()
{
    const auto observer = std::make_shared<CountingObserver<Interface>>();
    const auto remove = [observer](Adapter& adapter) { adapter.removeObserver(observer.get()); };
    const auto add = [observer, remove](Adapter& adapter) {
        adapter.addObserver(observer.get());
        remove(adapter);
    };
    return {does<Adapter>("addObserver", {}, add), does<Adapter>("removeObserver", {}, remove)};
}

vna::ErrorTerms twoPoints()
{
    vna::ErrorTerms terms;
    terms.frequencies = {1e9, 2e9};
    terms.ports = {{1, {{1, 2}}, {{3, 4}}, {{5, 6}}}};
    terms.portPairs = {{1, 2, {{1, 2}}, {{3, 4}}, {{5, 6}}}};
    return terms;
}

const QDateTime& instant()
{
    static const QDateTime time = QDateTime::fromSecsSinceEpoch(1'700'000'000, Qt::UTC);
    return time;
}

} // namespace

Operations fileMemoryOperations()
{
    return operations<SdkFileMemoryControl, sdk::service::IFileMemoryControl, FakeFileMemoryControl>({
        requests<SdkFileMemoryControl>(
            "fileList", "fileList()", std::vector<SdkFiles::FileInfo>{{"b", 1, -2}, {"ä", 3, 4}}, "b 1 -2, ä 3 4",
            Tells::Text,
            [](SdkFileMemoryControl& files) {
                return shown(files.fileList(), [](const auto& list) {
                    QStringList lines;
                    for (const auto& file : list)
                        lines.append(QString("%1 %2 %3").arg(file.name).arg(file.word1).arg(file.word2));
                    return lines.join(", ").toStdString();
                });
            }),
        requests<SdkFileMemoryControl>(
            "spaceInfo", "spaceInfo()", SdkFiles::SpaceInfo{1, 2, 0xFFFF'FFFF'FFFF'FFFF}, "1 2 18446744073709551615",
            Tells::Text,
            [](SdkFileMemoryControl& files) {
                return shown(files.spaceInfo(), [](const auto& space) {
                    return QString("%1 %2 %3").arg(space.value1).arg(space.value2).arg(space.value3).toStdString();
                });
            }),
        requests<SdkFileMemoryControl>("readFile", "readFile(\"\xC3\xA4\", 5, -6)",
                                       std::vector<unsigned char>{0, 0xFF, 7}, "00ff07", Tells::Text,
                                       [](SdkFileMemoryControl& files) {
                                           return shown(files.readFile({"ä", 5, -6}), [](const QByteArray& data) {
                                               return data.toHex().toStdString();
                                           });
                                       }),
        requests<SdkFileMemoryControl>(
            "writeFile", "writeFile(\"\xC3\xA4\", {1, 0, 255})", {}, "done", Tells::Text,
            [](SdkFileMemoryControl& files) { return shown(files.writeFile("ä", QByteArray("\x01\x00\xFF", 3))); }),
        requests<SdkFileMemoryControl>(
            "deleteFile", "deleteFile(\"x\", 5, -6)", {}, "done", Tells::Text,
            [](SdkFileMemoryControl& files) { return shown(files.deleteFile({"x", 5, -6})); }),
    });
}

Operations potentiometersOperations()
{
    return operations<SdkPotentiometersControl, sdk::service::IPotentiometersControl, FakePotentiometersControl>({
        requests<SdkPotentiometersControl>("readFromEeprom", "readFromEeprom(18446744073709551615)", -5, "-5",
                                           Tells::Failed,
                                           [](SdkPotentiometersControl& potentiometers) {
                                               return shown(potentiometers.readFromEeprom(static_cast<std::size_t>(-1)),
                                                            [](int value) { return std::to_string(value); });
                                           }),
        requests<SdkPotentiometersControl>(
            "writeToRam", "writeToRam(3, -70000)", {}, "done", Tells::Failed,
            [](SdkPotentiometersControl& potentiometers) { return shown(potentiometers.writeToRam(3, -70000)); }),
        requests<SdkPotentiometersControl>(
            "writeToEeprom", "writeToEeprom(4, 70000)", {}, "done", Tells::Failed,
            [](SdkPotentiometersControl& potentiometers) { return shown(potentiometers.writeToEeprom(4, 70000)); }),
        readsBy<SdkPotentiometersControl>(
            "potentiometers", [](SdkPotentiometersControl& adapter) { return each(adapter.potentiometers()); }, Texts{},
            SdkAnswers{std::vector<SdkPotentiometer>{{"a name longer than a short text", -1, 2}, {"b", 3, -4}}},
            Texts{"a name longer than a short text -1 2", "b 3 -4"}),
    });
}

Operations usbIdOperations()
{
    return operations<SdkMemoryUsbId, sdk::service::IMemoryUsbIdControl, FakeMemoryUsbIdControl>({
        requests<SdkMemoryUsbId>(
            "writeUsbId", "writeUsbId(1, 2, 65535)", {}, "done", Tells::False,
            [](SdkMemoryUsbId& usb) { return shown(usb.writeUsbId({1, 2, 65535, "another", 3, 4, 5})); }),
        readsBy<SdkMemoryUsbId>(
            "usbId", [](SdkMemoryUsbId& adapter) { return shown(adapter.usbId()); }, std::string("0 0 0 '' 1 0 0"),
            SdkAnswers{SdkUsbId{1, 2, 65535, sdk::Model::FourPort8, -7, 8, 9}},
            std::string("1 2 65535 '4-port analyser, 8 GHz' -7 8 9")),
        readsBy<SdkMemoryUsbId>(
            "usbIds", [](SdkMemoryUsbId& adapter) { return each(adapter.usbIds()); }, Texts{},
            SdkAnswers{std::vector<SdkUsbId>{{3, 0, 0, sdk::Model::TwoPort20, 0, 0, 0},
                                             {1, 0, 0, sdk::Model::TwoPort3, 4, 5, 6}}},
            Texts{"3 0 0 '2-port analyser, 20 GHz' 0 0 0", "1 0 0 '2-port analyser, 3 GHz' 4 5 6"}),
    });
}

Operations serialNumberOperations()
{
    return operations<SdkSerialNumberControl, sdk::service::IMemorySerialNumberControl, FakeMemorySerialNumberControl>(
        std::vector<Row<SdkSerialNumberControl>>{
            requests<SdkSerialNumberControl>("serialNumber", "readSerialNumber()", 777U, "777", Tells::Failed,
                                             [](SdkSerialNumberControl& serialNumber) {
                                                 return shown(serialNumber.serialNumber(), [](unsigned int number) {
                                                     return std::to_string(number);
                                                 });
                                             }),
            requests<SdkSerialNumberControl>("writeSerialNumber", "writeSerialNumber(4294967295)", {}, "done",
                                             Tells::Failed,
                                             [](SdkSerialNumberControl& serialNumber) {
                                                 return shown(serialNumber.writeSerialNumber(0xFFFF'FFFF));
                                             }),
        }
        + observing<SdkSerialNumberControl, ISerialNumberControl>() + lifecycle<SdkSerialNumberControl>());
}

Operations memoryOperationsOperations()
{
    return operations<SdkMemoryOperationsControl, sdk::service::IMemoryOperationsControl, FakeMemoryOperationsControl>(
        std::vector<Row<SdkMemoryOperationsControl>>{
            requests<SdkMemoryOperationsControl>("read", "read()", std::vector<std::byte>{std::byte{1}, std::byte{255}},
                                                 "2 bytes, 255 last", Tells::Failed,
                                                 [](SdkMemoryOperationsControl& memory) {
                                                     return shown(memory.read(), [](const auto& bytes) {
                                                         return std::to_string(bytes.size()) + " bytes, "
                                                                + std::to_string(std::to_integer<int>(bytes.back()))
                                                                + " last";
                                                     });
                                                 }),
            requests<SdkMemoryOperationsControl>(
                "write", "write({" + exactly(std::byte{9}) + "})", {}, "done", Tells::Failed,
                [](SdkMemoryOperationsControl& memory) { return shown(memory.write({std::byte{9}})); }),
            requests<SdkMemoryOperationsControl>(
                "erase", "erase()", {}, "done", Tells::Failed,
                [](SdkMemoryOperationsControl& memory) { return shown(memory.erase()); }),
            requests<SdkMemoryOperationsControl>(
                "integrityCheck", "integrityCheck()", {}, "done", Tells::Failed,
                [](SdkMemoryOperationsControl& memory) { return shown(memory.integrityCheck()); }),
        }
        + observing<SdkMemoryOperationsControl, IMemoryOperationsControl>() + lifecycle<SdkMemoryOperationsControl>());
}

Operations systemTermsOperations()
{
    using Adapter = SdkSystemTermsControl;
    return operations<Adapter, sdk::service::ISystemTermsControl, FakeSystemTermsControl>(
        std::vector<Row<Adapter>>{
            readsBy<Adapter>(
                "termsRecords", [](Adapter& adapter) { return each(adapter.termsRecords()); }, Texts{},
                SdkAnswers{std::vector<SdkRecord>{{7, 0.25, -5}, {-8, 2.5, 6}}}, Texts{"7 0.25 -5", "-8 2.5 6"}),
            does<Adapter>(
                "writeSystemTerms with records", {"writeSystemTerms with records(1700000000, -1.5)"},
                [](Adapter& adapter) { adapter.writeSystemTerms(instant(), -1.5, {{1, 2.0, 3}}, twoPoints()); }),
            does<Adapter>("writeSystemTerms without", {"writeSystemTerms(1700000000, -1.5)"},
                          [](Adapter& adapter) { adapter.writeSystemTerms(instant(), -1.5, twoPoints()); }),
            readsBy<Adapter>(
                "systemTermsFlag", [](Adapter& adapter) { return adapter.systemTermsFlag(); }, false, SdkAnswers{true},
                true),
        }
        + observing<Adapter, ISystemTermsControl>() + lifecycle<Adapter>());
}

} // namespace tov::testing

#include "python/binding.h"
#include "python/rooms.h"

#include <expected>
#include <optional>

namespace tov::python {

namespace {

using Records = std::vector<ISystemTermsControl::TermsRecord>;

// The control of the identifier has no more to say of a failure.
std::expected<void, QString> writeUsbId(IUsbIdControl& control, const IUsbIdControl::UsbId& id)
{
    if (control.writeUsbId(id))
        return {};
    return std::unexpected(QStringLiteral("the control is absent, or the instrument answered with an error"));
}

// Without records is something else than with none.
void defineWriteSystemTerms(py::class_<ControlOf<ISystemTermsControl>>& type, const Operation& operation)
{
    type.def(
        operation.python,
        [](const ControlOf<ISystemTermsControl>& self, const QDateTime& time, double parameter,
           const vna::ErrorTerms& terms, const std::optional<Records>& records) {
            self.call([&](ISystemTermsControl& control) {
                if (records)
                    control.writeSystemTerms(time, parameter, *records, terms);
                else
                    control.writeSystemTerms(time, parameter, terms);
            });
        },
        py::arg("time"), py::arg("parameter"), py::arg("terms"), py::arg("records") = py::none(), operation.doc);
}

} // namespace

void bindMemory(py::module_& module)
{
    bindRecord<SerialNumberEvent>(module);
    bindRecord<MemoryOperationEvent>(module);
    bindRecord<PotentiometerInfo>(module);
    bindRecord<vna::ErrorTerms, vna::ErrorTerms::Port, vna::ErrorTerms::PortPair>(module);

    Binding<IFileMemoryControl>(module)
        .has<IFileMemoryControl::FileInfo>()
        .has<IFileMemoryControl::SpaceInfo>()
        .waits("fileList", &IFileMemoryControl::fileList)
        .waits("spaceInfo", &IFileMemoryControl::spaceInfo)
        .waits("readFile", &IFileMemoryControl::readFile)
        .waits("writeFile", &IFileMemoryControl::writeFile)
        .waits("deleteFile", &IFileMemoryControl::deleteFile)
        .complete();

    Binding<IPotentiometersControl>(module)
        .reads("potentiometers", &IPotentiometersControl::potentiometers)
        .waits("readFromEeprom", &IPotentiometersControl::readFromEeprom)
        .waits("writeToRam", &IPotentiometersControl::writeToRam)
        .waits("writeToEeprom", &IPotentiometersControl::writeToEeprom)
        .complete();

    Binding<IUsbIdControl>(module)
        .has<IUsbIdControl::UsbId>()
        .reads("usbId", &IUsbIdControl::usbId)
        .reads("usbIds", &IUsbIdControl::usbIds)
        .waits("writeUsbId", writeUsbId)
        .complete();

    Binding<ISerialNumberControl>(module)
        .waits("serialNumber", &ISerialNumberControl::serialNumber)
        .waits("writeSerialNumber", &ISerialNumberControl::writeSerialNumber)
        .notifies<ISerialNumberControl::Observer>("onSerialNumberEvent", &Relay<ISerialNumberControl>::event)
        .complete<ISerialNumberControl::Observer>();

    using MemoryRelay = Relay<IMemoryOperationsControl>;
    Binding<IMemoryOperationsControl>(module)
        .waits("read", &IMemoryOperationsControl::read)
        .waits("write", &IMemoryOperationsControl::write)
        .waits("erase", &IMemoryOperationsControl::erase)
        .waits("integrityCheck", &IMemoryOperationsControl::integrityCheck)
        .notifies<IMemoryOperationsControl::IObserver>("onNotification1", &MemoryRelay::first)
        .notifies<IMemoryOperationsControl::IObserver>("onNotification2", &MemoryRelay::second)
        .notifies<IMemoryOperationsControl::IObserver>("onNotification3", &MemoryRelay::third)
        .notifies<IMemoryOperationsControl::IObserver>("onNotification4", &MemoryRelay::fourth)
        .complete<IMemoryOperationsControl::IObserver>();

    using TermsRelay = Relay<ISystemTermsControl>;
    Binding<ISystemTermsControl>(module)
        .has<ISystemTermsControl::Status>()
        .reads("termsRecords", &ISystemTermsControl::termsRecords)
        .further("writeSystemTerms", defineWriteSystemTerms)
        .reads("systemTermsFlag", &ISystemTermsControl::systemTermsFlag)
        .notifies<ISystemTermsControl::Observer>("onTermsNotice", &TermsRelay::notice)
        .notifies<ISystemTermsControl::Observer>("onTermsValue", &TermsRelay::value)
        .notifies<ISystemTermsControl::Observer>("onTermsSecondNotice", &TermsRelay::secondNotice)
        .notifies<ISystemTermsControl::Observer>("onTermsStatus", &TermsRelay::status)
        .complete<ISystemTermsControl::Observer>();
}

} // namespace tov::python

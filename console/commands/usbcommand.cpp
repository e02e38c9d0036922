#include "console/commands/commands.h"

#include "tools/text/number.h"
#include "tools/text/values.h"

#include <cstdint>
#include <tuple>

namespace tov::console {

namespace {

using devices::service::IUsbIdControl;

struct Arguments
{
    std::string id1;
    std::string id2;
    std::string id3;
};

// As the lists show it, with the words and the data in hexadecimal: JSON has no 64-bit numbers.
Table tableOf(const std::vector<IUsbIdControl::UsbId>& ids)
{
    Table table({"id1", "id2", "id3", "model", "tag", "data1", "data2"});
    for (const auto& id : ids)
        table.addRow({hexadecimal(id.id1, 4), hexadecimal(id.id2, 4), hexadecimal(id.id3, 4), id.modelName,
                      std::to_string(id.tag), hexadecimal(id.data1, 16), hexadecimal(id.data2, 16)});
    return table;
}

void show(ConsoleSession& console, const std::vector<IUsbIdControl::UsbId>& ids)
{
    console.output().answer(tableOf(ids), "usb-ids");
}

void get(ConsoleSession& console)
{
    show(console, {console.require(host::controls::usbId)->usbId()});
}

void list(ConsoleSession& console)
{
    show(console, console.require(host::controls::usbId)->usbIds());
}

void set(ConsoleSession& console, const Arguments& arguments)
{
    const auto control = console.require(host::controls::usbId);
    IUsbIdControl::UsbId id;
    id.id1 = requireNumber<std::uint16_t>("id1", arguments.id1);
    id.id2 = requireNumber<std::uint16_t>("id2", arguments.id2);
    id.id3 = requireNumber<std::uint16_t>("id3", arguments.id3);
    console.confirm("write the USB identifier " + hexadecimal(id.id1, 4) + " " + hexadecimal(id.id2, 4) + " "
                    + hexadecimal(id.id3, 4));
    if (!control->writeUsbId(id))
        throw Failure("the USB identifier cannot be written: the instrument gives no reason; try again");
    const IUsbIdControl::UsbId kept = control->usbId();
    if (std::tie(kept.id1, kept.id2, kept.id3) != std::tie(id.id1, id.id2, id.id3))
        throw Failure("the instrument did not take the words; 'usb get' shows what it holds");
    show(console, {kept});
}

} // namespace

void addUsbCommand(Command& program)
{
    Command& usb = program.add("usb", "Show or write the USB identifier");
    const auto arguments = std::make_shared<Arguments>();
    usb.add("get", "Show the identifier of this instrument").runs(get);
    usb.add("ls", "List the identifiers that the instrument offers").runs(list);
    usb.add("set", "Write the three words of the identifier (decimal, or hexadecimal with 0x)")
        .argument("id1", arguments->id1, "ID1", "First word, 0 to 65535")
        .argument("id2", arguments->id2, "ID2", "Second word")
        .argument("id3", arguments->id3, "ID3", "Third word")
        .runs(set, arguments);
}

} // namespace tov::console

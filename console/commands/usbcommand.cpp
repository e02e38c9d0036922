#include "console/commands/subcommand.h"

#include "console/number.h"
#include "console/workbench.h"

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

void show(Workbench& workbench, const std::vector<IUsbIdControl::UsbId>& ids)
{
    const Table table = tableOf(ids);
    workbench.output().answer(table.toText(), {{"usb-ids", table.toJson()}});
}

void get(Workbench& workbench)
{
    show(workbench, {workbench.require(host::controls::usbId)->usbId()});
}

void list(Workbench& workbench)
{
    show(workbench, workbench.require(host::controls::usbId)->usbIds());
}

void set(Workbench& workbench, const Arguments& arguments)
{
    const auto control = workbench.require(host::controls::usbId);
    IUsbIdControl::UsbId id;
    id.id1 = requireNumber<std::uint16_t>("id1", arguments.id1);
    id.id2 = requireNumber<std::uint16_t>("id2", arguments.id2);
    id.id3 = requireNumber<std::uint16_t>("id3", arguments.id3);
    if (!control->writeUsbId(id))
        throw CommandError(ExitStatus::Failure,
                           "the USB identifier cannot be written: the instrument gives no reason; try again");
    const IUsbIdControl::UsbId kept = control->usbId();
    if (std::tie(kept.id1, kept.id2, kept.id3) != std::tie(id.id1, id.id2, id.id3))
        throw CommandError(ExitStatus::Failure, "the instrument did not take the words; 'usb get' shows what it holds");
    show(workbench, {kept});
}

} // namespace

void addUsbCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App& usb = *app.add_subcommand("usb", "Show or write the USB identifier");
    addSubcommand(usb, chosen, "get", "Show the identifier of this instrument", get);
    addSubcommand(usb, chosen, "ls", "List the identifiers that the instrument offers", list);
    addSubcommand<Arguments>(
        usb, chosen, "set", "Write the three words of the identifier (decimal, or hexadecimal with 0x)",
        [](CLI::App& command, Arguments& arguments) {
            command.add_option("id1", arguments.id1, "First word, 0 to 65535")->required()->type_name("ID1");
            command.add_option("id2", arguments.id2, "Second word")->required()->type_name("ID2");
            command.add_option("id3", arguments.id3, "Third word")->required()->type_name("ID3");
        },
        set);
}

} // namespace tov::console

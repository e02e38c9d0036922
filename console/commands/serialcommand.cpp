#include "console/commands/commands.h"

#include "tools/text/number.h"

namespace tov::console {

namespace {

void show(ConsoleSession& console, const devices::service::ISerialNumberControl& control)
{
    const auto number = control.serialNumber();
    if (!number)
        throw Failure("the serial number cannot be read: the instrument gives no reason; try again");
    console.output().answer(std::to_string(*number) + "\n", {{"serial-number", static_cast<qint64>(*number)}});
}

void get(ConsoleSession& console)
{
    show(console, *console.require(host::controls::serialNumber));
}

void set(ConsoleSession& console, const std::string& text)
{
    const auto control = console.require(host::controls::serialNumber);
    const auto number = requireNumber<unsigned int>("number", text);
    console.confirm("write the serial number " + std::to_string(number));
    if (!control->writeSerialNumber(number))
        throw Failure("the serial number cannot be written: the instrument gives no reason; try again");
    if (const auto kept = control->serialNumber(); kept && *kept != number)
        throw Failure("the instrument did not take " + text + "; it holds " + std::to_string(*kept));
    show(console, *control);
}

} // namespace

void addSerialCommand(Command& program)
{
    Command& serial = program.add("serial", "Show or write the serial number");
    const auto number = std::make_shared<std::string>();
    serial.add("get", "Show the serial number").runs(get);
    serial.add("set", "Write the serial number")
        .argument("number", *number, "NUMBER", "The serial number, 0 to 4294967295")
        .runs(set, number);
}

} // namespace tov::console

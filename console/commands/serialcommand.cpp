#include "console/commands/subcommand.h"

#include "console/number.h"
#include "console/workbench.h"

namespace tov::console {

namespace {

struct Arguments
{
    std::string number;
};

void show(Workbench& workbench, const devices::service::ISerialNumberControl& control)
{
    const auto number = control.serialNumber();
    if (!number)
        throw CommandError(ExitStatus::Failure,
                           "the serial number cannot be read: the instrument gives no reason; try again");
    workbench.output().answer(std::to_string(*number) + "\n", {{"serial-number", static_cast<qint64>(*number)}});
}

void get(Workbench& workbench)
{
    show(workbench, *workbench.require(host::controls::serialNumber));
}

void set(Workbench& workbench, const Arguments& arguments)
{
    const auto control = workbench.require(host::controls::serialNumber);
    const auto number = requireNumber<unsigned int>("number", arguments.number);
    if (!control->writeSerialNumber(number))
        throw CommandError(ExitStatus::Failure,
                           "the serial number cannot be written: the instrument gives no reason; try again");
    if (const auto kept = control->serialNumber(); kept && *kept != number)
        throw CommandError(ExitStatus::Failure,
                           "the instrument did not take " + arguments.number + "; it holds " + std::to_string(*kept));
    show(workbench, *control);
}

} // namespace

void addSerialCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App& serial = *app.add_subcommand("serial", "Show or write the serial number");
    addSubcommand(serial, chosen, "get", "Show the serial number", get);
    addSubcommand<Arguments>(
        serial, chosen, "set", "Write the serial number",
        [](CLI::App& command, Arguments& arguments) {
            command.add_option("number", arguments.number, "The serial number, 0 to 4294967295")
                ->required()
                ->type_name("NUMBER");
        },
        set);
}

} // namespace tov::console

#include "console/commands/subcommand.h"

#include "console/number.h"
#include "console/workbench.h"

namespace tov::console {

namespace {

struct Arguments
{
    std::string index;
    std::string value;
    bool ram = false;
    bool eeprom = false;
};

template <typename Value>
void requireSuccess(const std::expected<Value, devices::service::IPotentiometersControl::Error>& result,
                    const std::string& what)
{
    if (!result)
        throw CommandError(ExitStatus::Failure,
                           what + " failed: the instrument gives no reason; 'pots ls' shows the potentiometers");
}

void list(Workbench& workbench)
{
    const auto control = workbench.require(host::controls::potentiometers);
    Table table({"index", "name", "word1", "word2", "EEPROM"});
    QJsonArray json;
    std::size_t index = 0;
    for (const auto& potentiometer : control->potentiometers()) {
        const auto value = control->readFromEeprom(index);
        table.addRow({std::to_string(index), potentiometer.name, std::to_string(potentiometer.word1),
                      std::to_string(potentiometer.word2), value ? std::to_string(*value) : "failed"});
        json.append(QJsonObject{{"index", static_cast<qint64>(index)},
                                {"name", QString::fromStdString(potentiometer.name)},
                                {"word1", potentiometer.word1},
                                {"word2", potentiometer.word2},
                                {"eeprom", value ? QJsonValue(*value) : QJsonValue()}});
        ++index;
    }
    workbench.output().answer(table.toText(), {{"potentiometers", json}});
}

void get(Workbench& workbench, const Arguments& arguments)
{
    const auto index = requireNumber<std::size_t>("index", arguments.index);
    const auto value = workbench.require(host::controls::potentiometers)->readFromEeprom(index);
    requireSuccess(value, "reading potentiometer " + arguments.index);
    workbench.output().answer(std::to_string(*value) + "\n", {{"eeprom", *value}});
}

void set(Workbench& workbench, const Arguments& arguments)
{
    const auto control = workbench.require(host::controls::potentiometers);
    const auto index = requireNumber<std::size_t>("index", arguments.index);
    const auto value = requireNumber<int>("value", arguments.value);
    requireSuccess(arguments.ram ? control->writeToRam(index, value) : control->writeToEeprom(index, value),
                   "writing potentiometer " + arguments.index);
    workbench.output().answer("written\n", {{arguments.ram ? "ram" : "eeprom", value}});
}

void declareIndex(CLI::App& command, Arguments& arguments)
{
    command.add_option("index", arguments.index, "Index of the potentiometer")->required()->type_name("INDEX");
}

} // namespace

void addPotsCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App& pots = *app.add_subcommand("pots", "Work with the digital potentiometers");
    addSubcommand(pots, chosen, "ls", "List the potentiometers with their values in EEPROM", list);
    addSubcommand<Arguments>(pots, chosen, "get", "Show the value in EEPROM", declareIndex, get);
    addSubcommand<Arguments>(
        pots, chosen, "set", "Write a value to RAM or to EEPROM",
        [](CLI::App& command, Arguments& arguments) {
            declareIndex(command, arguments);
            command.add_option("value", arguments.value, "The value")->required()->type_name("VALUE");
            CLI::Option_group* const where = command.add_option_group("memory", "Which of the two");
            where->add_flag("--ram", arguments.ram, "Write to RAM");
            where->add_flag("--eeprom", arguments.eeprom, "Write to EEPROM");
            where->require_option(1);
        },
        set);
}

} // namespace tov::console

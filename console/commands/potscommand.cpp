#include "console/commands/commands.h"

#include "tools/text/number.h"

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
        throw Failure(what + " failed: the instrument gives no reason; 'pots ls' shows the potentiometers");
}

void list(ConsoleSession& console)
{
    const auto control = console.require(host::controls::potentiometers);
    Table table({"index", "name", {"min", "word1"}, {"max", "word2"}, {"EEPROM", "eeprom"}});
    std::size_t index = 0;
    for (const auto& potentiometer : control->potentiometers()) {
        const auto value = control->readFromEeprom(index);
        table.addRow({{std::to_string(index), static_cast<qint64>(index)},
                      potentiometer.name,
                      potentiometer.word1,
                      potentiometer.word2,
                      value ? Cell(*value) : Cell("failed", QJsonValue(), Cell::Tone::Bad)});
        ++index;
    }
    console.output().answer(table, "potentiometers");
}

void get(ConsoleSession& console, const Arguments& arguments)
{
    const auto index = requireNumber<std::size_t>("index", arguments.index);
    const auto value = console.require(host::controls::potentiometers)->readFromEeprom(index);
    requireSuccess(value, "reading potentiometer " + arguments.index);
    console.output().answer(std::to_string(*value) + "\n", {{"eeprom", *value}});
}

void set(ConsoleSession& console, const Arguments& arguments)
{
    const auto control = console.require(host::controls::potentiometers);
    const auto index = requireNumber<std::size_t>("index", arguments.index);
    const auto value = requireNumber<int>("value", arguments.value);
    requireSuccess(arguments.ram ? control->writeToRam(index, value) : control->writeToEeprom(index, value),
                   "writing potentiometer " + arguments.index);
    console.output().answer("written\n", {{arguments.ram ? "ram" : "eeprom", value}});
}

Words indices(const Words& /*before*/, ConsoleSession& console)
{
    Words indices;
    for (std::size_t i = 0; i < console.require(host::controls::potentiometers)->potentiometers().size(); ++i)
        indices.push_back(std::to_string(i));
    return indices;
}

} // namespace

void addPotsCommand(Command& program)
{
    Command& pots = program.add("pots", "Work with the digital potentiometers");
    const auto arguments = std::make_shared<Arguments>();
    pots.add("ls", "List the potentiometers with their values in EEPROM").runs(list);
    pots.add("get", "Show the value in EEPROM")
        .argument("index", arguments->index, "INDEX", "Index of the potentiometer", indices)
        .runs(get, arguments);
    pots.add("set", "Write a value to RAM or to EEPROM")
        .argument("index", arguments->index, "INDEX", "Index of the potentiometer", indices)
        .argument("value", arguments->value, "VALUE", "The value")
        .oneOf({"memory",
                "Which of the two",
                {{.name = "--ram", .target = &arguments->ram, .help = "Write to RAM"},
                 {.name = "--eeprom", .target = &arguments->eeprom, .help = "Write to EEPROM"}}})
        .runs(set, arguments);
}

} // namespace tov::console

#include "console/commands/subcommand.h"

#include "console/localfile.h"
#include "console/tuning.h"

#include <span>

namespace tov::console {

namespace {

struct Arguments
{
    std::string module;
    std::string setting;
    std::string value;
    std::string table;
    std::string localFile;
};

// One line for each setting. When all modules are listed, those of an absent control are left out, and it is named.
void list(Workbench& workbench, const Arguments& arguments)
{
    const bool all = arguments.module.empty();
    const std::span<const TuneModule> modules =
        all ? std::span(tuneModules()) : std::span(&tuneModuleNamed(arguments.module), 1);
    Table table({"module", "setting", "value", "type", "allowed", "meaning"});
    QJsonArray json;
    for (const TuneModule& module : modules) {
        const std::string name(module.control->name);
        if (all && !workbench.session().isPresent(*module.control)) {
            table.addRow({name, "-", "missing", "-", "-", "-"});
            json.append(QJsonObject{{"module", QString::fromStdString(name)}, {"missing", true}});
            continue;
        }
        for (const TuneSetting& setting : module.settings) {
            const QJsonValue value = setting.read(workbench);
            const std::string allowed = setting.write ? allowedBy(workbench, setting) : "-";
            table.addRow({name, setting.name, shown(value), setting.type, allowed, setting.meaning});
            json.append(QJsonObject{{"module", QString::fromStdString(name)},
                                    {"setting", QString::fromStdString(setting.name)},
                                    {"value", value},
                                    {"type", QString::fromStdString(setting.type)},
                                    {"allowed", QString::fromStdString(allowed)},
                                    {"meaning", QString::fromStdString(setting.meaning)}});
        }
    }
    workbench.output().answer(table.toText(), {{"settings", json}});
}

void answer(Workbench& workbench, const TuneSetting& setting)
{
    const QJsonValue value = setting.read(workbench);
    workbench.output().answer(shown(value) + "\n", {{QString::fromStdString(setting.name), value}});
}

void get(Workbench& workbench, const Arguments& arguments)
{
    answer(workbench, tuneSettingNamed(tuneModuleNamed(arguments.module), arguments.setting));
}

void set(Workbench& workbench, const Arguments& arguments)
{
    const TuneSetting& setting = tuneSettingNamed(tuneModuleNamed(arguments.module), arguments.setting);
    changeSetting(workbench, setting, arguments.value);
    answer(workbench, setting);
}

void reset(Workbench& workbench, const Arguments& arguments)
{
    const TuneModule& module = tuneModuleNamed(arguments.module);
    if (!module.reset)
        throw CommandError(ExitStatus::BadUse, arguments.module + " has no reset");
    module.reset(workbench);
    workbench.output().answer(arguments.module + " is reset\n", {{"reset", QString::fromStdString(arguments.module)}});
}

void loadTable(Workbench& workbench, const Arguments& arguments)
{
    const TuneModule& module = tuneModuleNamed(arguments.module);
    const TuneTable& table = tuneTableNamed(module, arguments.table);
    const QByteArray contents = readLocalFile(arguments.localFile);
    table.load(workbench, {contents.begin(), contents.end()});
    workbench.output().answer("loaded " + std::to_string(contents.size()) + " bytes into " + table.name + "\n",
                              {{"table", QString::fromStdString(table.name)}, {"bytes", contents.size()}});
}

// The names of all modules with those of what is inside each.
template <typename Element>
std::string describeModules(const std::string& heading, std::vector<Element> TuneModule::* inside)
{
    std::string lines = heading + ":\n";
    for (const TuneModule& module : tuneModules()) {
        std::string names;
        for (const Element& element : module.*inside)
            names.append(" ").append(element.name);
        if (!names.empty())
            lines.append("  ").append(module.control->name).append(":").append(names).append("\n");
    }
    return lines;
}

std::string describeSettings()
{
    return describeModules("Modules and their settings", &TuneModule::settings);
}

std::string describeTables()
{
    return describeModules("Modules and their tables", &TuneModule::tables);
}

void addModule(CLI::App& command, Arguments& arguments)
{
    command.add_option("module", arguments.module, "Name of a module")->required()->type_name("MODULE");
}

void addSetting(CLI::App& command, Arguments& arguments)
{
    addModule(command, arguments);
    command.add_option("setting", arguments.setting, "Name of a setting")->required()->type_name("SETTING");
}

} // namespace

void addTuneCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App& tune = *app.add_subcommand("tune", "Show or change the settings of the hardware modules");
    addSubcommand<Arguments>(
        tune, chosen, "ls", "List every setting with its value, its type and what it takes",
        [](CLI::App& command, Arguments& arguments) {
            command.add_option("module", arguments.module, "Name of a module; all when left out")->type_name("MODULE");
        },
        list)
        ->footer(describeSettings);
    addSubcommand<Arguments>(tune, chosen, "get", "Show one setting", addSetting, get)->footer(describeSettings);
    addSubcommand<Arguments>(
        tune, chosen, "set", "Change one setting",
        [](CLI::App& command, Arguments& arguments) {
            addSetting(command, arguments);
            command.add_option("value", arguments.value, "Its new value")->required()->type_name("VALUE");
        },
        set)
        ->footer(describeSettings);
    addSubcommand<Arguments>(tune, chosen, "reset", "Take a module back to what it starts with", addModule, reset);
    addSubcommand<Arguments>(
        tune, chosen, "load-table", "Load the bytes of a file into a table of a module",
        [](CLI::App& command, Arguments& arguments) {
            addModule(command, arguments);
            command.add_option("table", arguments.table, "Name of the table")->required()->type_name("TABLE");
            addLocalFile(command, arguments.localFile);
        },
        loadTable)
        ->footer(describeTables);
}

} // namespace tov::console

#include "console/commands/commands.h"

#include "tools/files/localfile.h"
#include "tools/tuning/tuning.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <type_traits>

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
void list(ConsoleSession& console, const Arguments& arguments)
{
    const bool all = arguments.module.empty();
    const std::span<const TuneModule> modules =
        all ? std::span(tuneModules()) : std::span(&tuneModuleNamed(arguments.module), 1);
    Table table({"module", "setting", "value", "unit", "type", "allowed", "meaning"});
    for (const TuneModule& module : modules) {
        const std::string name(module.control->name);
        if (all && !console.session().isPresent(*module.control)) {
            const Cell none("-", QJsonValue());
            table.addRow({name, none, {"missing", QJsonValue(), Cell::Tone::Bad}, none, none, none, none});
            continue;
        }
        const TunedAdapter adapter = module.adapter(console.session());
        for (const TuneSetting& setting : module.settings) {
            const QJsonValue value = setting.read(adapter);
            const std::string allowed = setting.write ? allowedBy(adapter, setting) : "-";
            table.addRow(
                {name, setting.name, {shown(value), value}, setting.unit, setting.type, allowed, setting.meaning});
        }
    }
    console.output().answer(table, "settings");
}

void answer(ConsoleSession& console, const TuneModule& module, const TuneSetting& setting)
{
    const QJsonValue value = setting.read(module.adapter(console.session()));
    QJsonObject json{{QString::fromStdString(setting.name), value}};
    if (!setting.unit.empty())
        json.insert("unit", QString::fromStdString(setting.unit));
    console.output().answer(shown(value) + "\n", json);
}

void get(ConsoleSession& console, const Arguments& arguments)
{
    const TuneModule& module = tuneModuleNamed(arguments.module);
    answer(console, module, tuneSettingNamed(module, arguments.setting));
}

void set(ConsoleSession& console, const Arguments& arguments)
{
    const TuneModule& module = tuneModuleNamed(arguments.module);
    const TuneSetting& setting = tuneSettingNamed(module, arguments.setting);
    changeSetting(module.adapter(console.session()), setting, arguments.value);
    answer(console, module, setting);
}

void reset(ConsoleSession& console, const Arguments& arguments)
{
    const TuneModule& module = tuneModuleNamed(arguments.module);
    if (!module.reset)
        throw BadUse(arguments.module + " has no reset");
    module.reset(module.adapter(console.session()));
    console.output().answer(arguments.module + " is reset\n", {{"reset", QString::fromStdString(arguments.module)}});
}

void loadTable(ConsoleSession& console, const Arguments& arguments)
{
    const TuneModule& module = tuneModuleNamed(arguments.module);
    const TuneTable& table = tuneTableNamed(module, arguments.table);
    const QByteArray contents = readLocalFile(arguments.localFile);
    table.load(module.adapter(console.session()), {contents.begin(), contents.end()});
    console.output().answer("loaded " + std::to_string(contents.size()) + " bytes into " + table.name + "\n",
                            {{"table", QString::fromStdString(table.name)}, {"bytes", contents.size()}});
}

// The names of all modules with those of what is inside each.
template <typename Element>
std::string describeModules(const std::string& heading, std::vector<Element> TuneModule::* inside)
{
    std::string lines = heading + ":\n";
    for (const TuneModule& module : tuneModules()) {
        std::string names;
        for (const Element& element : module.*inside) {
            names.append(" ").append(element.name);
            if constexpr (std::is_same_v<Element, TuneSetting>)
                names.append(element.unit.empty() ? "" : " (" + element.unit + ")");
        }
        if (!names.empty())
            lines.append("  ").append(module.control->name).append(":").append(names).append("\n");
    }
    return lines + "\n";
}

// What to offer in each place.
Words modules(const Words& /*before*/)
{
    Words names;
    for (const TuneModule& module : tuneModules())
        names.emplace_back(module.control->name);
    return names;
}

Words modulesWithReset(const Words& before)
{
    Words names = modules(before);
    std::erase_if(names, [](const std::string& name) { return !tuneModuleNamed(name).reset; });
    return names;
}

template <typename Element>
Words namesOf(const std::vector<Element>& elements)
{
    Words names;
    std::ranges::transform(elements, std::back_inserter(names), &Element::name);
    return names;
}

Words settingsOf(const Words& before)
{
    return namesOf(tuneModuleNamed(before[0]).settings);
}

Words writableSettingsOf(const Words& before)
{
    const TuneModule& module = tuneModuleNamed(before[0]);
    Words names = namesOf(module.settings);
    std::erase_if(names, [&](const std::string& name) { return !tuneSettingNamed(module, name).write; });
    return names;
}

Words valuesOf(const Words& before)
{
    return tuneSettingNamed(tuneModuleNamed(before[0]), before[1]).choices;
}

Words tablesOf(const Words& before)
{
    return namesOf(tuneModuleNamed(before[0]).tables);
}

} // namespace

void addTuneCommand(Command& program)
{
    Command& tune = program.add("tune", "Show or change the settings of the hardware modules");
    const auto arguments = std::make_shared<Arguments>();
    const std::string settings = describeModules("Modules and their settings", &TuneModule::settings);
    const std::string tables = describeModules("Modules and their tables", &TuneModule::tables);
    tune.add("ls", "List every setting with its value, its type and what it takes")
        .optional("module", &arguments->module, "MODULE", "Name of a module; all when left out", modules)
        .footer(settings)
        .runs(list, arguments);
    tune.add("get", "Show one setting")
        .argument("module", arguments->module, "MODULE", "Name of a module", modules)
        .argument("setting", arguments->setting, "SETTING", "Name of a setting", settingsOf)
        .footer(settings)
        .runs(get, arguments);
    tune.add("set", "Change one setting")
        .argument("module", arguments->module, "MODULE", "Name of a module", modules)
        .argument("setting", arguments->setting, "SETTING", "Name of a setting", writableSettingsOf)
        .argument("value", arguments->value, "VALUE", "Its new value", valuesOf)
        .footer(settings)
        .runs(set, arguments);
    tune.add("reset", "Take a module back to what it starts with")
        .argument("module", arguments->module, "MODULE", "Name of a module", modulesWithReset)
        .runs(reset, arguments);
    tune.add("load-table", "Load the bytes of a file into a table of a module")
        .argument("module", arguments->module, "MODULE", "Name of a module", modules)
        .argument("table", arguments->table, "TABLE", "Name of the table", tablesOf)
        .argument("file", arguments->localFile, "FILE", "File of this computer")
        .footer(tables)
        .runs(loadTable, arguments);
}

} // namespace tov::console

#include "console/commands/subcommand.h"

#include "console/tuning.h"

namespace tov::console {

namespace {

const TuneModule& module()
{
    return tuneModuleNamed("yq-synthesis");
}

struct Arguments
{
    std::string setting;
    std::string value;
};

void get(Workbench& workbench, const Arguments& arguments)
{
    if (arguments.setting.empty())
        answerSettings(workbench, module().settings);
    else
        answerSettings(workbench, std::span(&tuneSettingNamed(module(), arguments.setting), 1));
}

void set(Workbench& workbench, const Arguments& arguments)
{
    const TuneSetting& setting = tuneSettingNamed(module(), arguments.setting);
    changeSetting(workbench, setting, arguments.value);
    answerSettings(workbench, std::span(&setting, 1));
}

} // namespace

void addYqCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App& yq = *app.add_subcommand("yq", "Show or change the IF settings of the Yq synthesis module");
    addSubcommand<Arguments>(
        yq, chosen, "get", "Show one setting or all of them",
        [](CLI::App& command, Arguments& arguments) {
            command.add_option("setting", arguments.setting, "Name of a setting; all when left out")
                ->type_name("SETTING");
        },
        get)
        ->footer([] { return describe(module()); });
    addSubcommand<Arguments>(
        yq, chosen, "set", "Change one setting",
        [](CLI::App& command, Arguments& arguments) {
            command.add_option("setting", arguments.setting, "Name of the setting")->required()->type_name("SETTING");
            command.add_option("value", arguments.value, "Its new value")->required()->type_name("VALUE");
        },
        set)
        ->footer([] { return describe(module()); });
}

} // namespace tov::console

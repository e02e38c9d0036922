#include "console/commands/subcommand.h"

#include "console/tuning.h"

namespace tov::console {

namespace {

// The module's only one.
std::span<const TuneSetting> settings()
{
    return tuneModuleNamed("lo-leakage").settings;
}

struct Arguments
{
    std::string state;
};

void get(Workbench& workbench)
{
    answerSettings(workbench, settings());
}

void set(Workbench& workbench, const Arguments& arguments)
{
    changeSetting(workbench, settings().front(), arguments.state);
    answerSettings(workbench, settings());
}

} // namespace

void addLoLeakageCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App& loLeakage = *app.add_subcommand("lo-leakage", "Show or switch the LO leakage function");
    addSubcommand(loLeakage, chosen, "get", "Tell whether the function is on", get);
    addSubcommand<Arguments>(
        loLeakage, chosen, "set", "Switch the function on or off",
        [](CLI::App& command, Arguments& arguments) {
            command.add_option("state", arguments.state, "on or off")->required()->type_name("on|off");
        },
        set);
}

} // namespace tov::console

#include "console/commands/subcommand.h"

#include "console/setting.h"

namespace tov::console {

namespace {

using devices::service::SdkLoLeakageControl;

constexpr Setting<SdkLoLeakageControl> enabled{
    "lo-leakage", "the LO leakage function",
    [](const SdkLoLeakageControl& control) { return QJsonValue(control.isEnabled()); }, &onOff,
    [](SdkLoLeakageControl& control, const QJsonValue& value) { control.setEnabled(value.toBool()); }};

struct Arguments
{
    std::string state;
};

void get(Workbench& workbench)
{
    showSettings(workbench.output(), *workbench.require(host::controls::loLeakage), std::span(&enabled, 1));
}

void set(Workbench& workbench, const Arguments& arguments)
{
    changeSetting(workbench, host::controls::loLeakage, enabled, arguments.state);
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

#include "console/commands/commands.h"

#include "console/setting.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace tov::console {

namespace {

using devices::service::SdkLoLeakageControl;

constexpr Setting<SdkLoLeakageControl> enabled{
    "lo-leakage", "the LO leakage function",
    [](const SdkLoLeakageControl& control) { return QJsonValue(control.isEnabled()); }, &onOff,
    [](SdkLoLeakageControl& control, const QJsonValue& value) { control.setEnabled(value.toBool()); }};

} // namespace

void addLoLeakageCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App* const command = app.add_subcommand("lo-leakage", "Show or switch the LO leakage function");

    command->add_subcommand("get", "Tell whether the function is on")->callback([&chosen] {
        chosen = [](Workbench& workbench) {
            const auto control = workbench.require(host::controls::loLeakage);
            showSettings(workbench.output(), *control, std::span(&enabled, 1));
            return ExitStatus::Success;
        };
    });

    CLI::App* const set = command->add_subcommand("set", "Switch the function on or off");
    const auto value = std::make_shared<std::string>();
    set->add_option("state", *value, "on or off")->required()->type_name("on|off");
    set->callback([&chosen, value] {
        chosen = [value](Workbench& workbench) {
            changeSetting(workbench, host::controls::loLeakage, enabled, *value);
            return ExitStatus::Success;
        };
    });
}

} // namespace tov::console

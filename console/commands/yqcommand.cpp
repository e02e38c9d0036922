#include "console/commands/commands.h"

#include "console/setting.h"

#include <CLI/CLI.hpp>

#include <QJsonArray>

#include <array>
#include <memory>

namespace tov::console {

namespace {

using devices::service::SdkYqSynthesisControl;

QJsonValue supportedIfs(const SdkYqSynthesisControl& control)
{
    QJsonArray list;
    for (const double frequency : control.supportedIfs())
        list.append(frequency);
    return list;
}

constexpr std::array<Setting<SdkYqSynthesisControl>, 3> settings{{
    {"manual-if", "whether a manually chosen IF is in force",
     [](const SdkYqSynthesisControl& control) { return QJsonValue(control.manualIfEnabled()); }, &onOff,
     [](SdkYqSynthesisControl& control, const QJsonValue& value) { control.enableManualIf(value.toBool()); }},
    {"selected-if", "index of the selected IF in supported-ifs",
     [](const SdkYqSynthesisControl& control) { return QJsonValue(control.selectedIf()); }, &wholeNumber,
     [](SdkYqSynthesisControl& control, const QJsonValue& value) { control.setSelectedIf(value.toInt()); }},
    {"supported-ifs", "the IFs of the module, in the instrument's unit", supportedIfs},
}};

constexpr std::span<const Setting<SdkYqSynthesisControl>> allSettings(settings);

} // namespace

void addYqCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App* const command = app.add_subcommand("yq", "Show or change the IF settings of the Yq synthesis module");

    const auto name = std::make_shared<std::string>();
    const auto value = std::make_shared<std::string>();

    CLI::App* const get = command->add_subcommand("get", "Show one setting or all of them");
    get->footer(describe(allSettings));
    get->add_option("setting", *name, "Name of a setting; all when left out")->type_name("SETTING");
    get->callback([&chosen, name] {
        chosen = [name](Workbench& workbench) {
            const auto shown = name->empty() ? allSettings : std::span(&settingNamed(allSettings, *name), 1);
            const auto control = workbench.require(host::controls::yqSynthesis);
            showSettings(workbench.output(), *control, shown);
            return ExitStatus::Success;
        };
    });

    CLI::App* const set = command->add_subcommand("set", "Change one setting");
    set->footer(describe(allSettings));
    set->add_option("setting", *name, "Name of the setting")->required()->type_name("SETTING");
    set->add_option("value", *value, "Its new value")->required()->type_name("VALUE");
    set->callback([&chosen, name, value] {
        chosen = [name, value](Workbench& workbench) {
            changeSetting(workbench, host::controls::yqSynthesis, settingNamed(allSettings, *name), *value);
            return ExitStatus::Success;
        };
    });
}

} // namespace tov::console

#include "console/commands/subcommand.h"

#include "console/setting.h"

#include <QJsonArray>

#include <array>

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

struct Arguments
{
    std::string setting;
    std::string value;
};

void get(Workbench& workbench, const Arguments& arguments)
{
    const auto shown =
        arguments.setting.empty() ? allSettings : std::span(&settingNamed(allSettings, arguments.setting), 1);
    showSettings(workbench.output(), *workbench.require(host::controls::yqSynthesis), shown);
}

void set(Workbench& workbench, const Arguments& arguments)
{
    changeSetting(workbench, host::controls::yqSynthesis, settingNamed(allSettings, arguments.setting),
                  arguments.value);
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
        ->footer(describe(allSettings));
    addSubcommand<Arguments>(
        yq, chosen, "set", "Change one setting",
        [](CLI::App& command, Arguments& arguments) {
            command.add_option("setting", arguments.setting, "Name of the setting")->required()->type_name("SETTING");
            command.add_option("value", arguments.value, "Its new value")->required()->type_name("VALUE");
        },
        set)
        ->footer(describe(allSettings));
}

} // namespace tov::console

#include "console/commands/subcommand.h"

#include "console/number.h"
#include "console/workbench.h"

namespace tov::console {

namespace {

using devices::FactoryCorrection;
using devices::service::SdkFactoryCorrectionControl;

std::string nameOf(FactoryCorrection correction)
{
    return "correction-" + std::to_string(static_cast<int>(correction) + 1);
}

struct Arguments
{
    std::string correction;
};

// Throws unless the instrument supports a correction of this name or number.
FactoryCorrection correctionNamed(const SdkFactoryCorrectionControl& control, const std::string& name)
{
    const auto number = parseNumber<int>(name);
    std::string known;
    for (const FactoryCorrection correction : control.supported()) {
        if (name == nameOf(correction) || number == static_cast<int>(correction) + 1)
            return correction;
        known.append(known.empty() ? "; there are " : ", ").append(nameOf(correction));
    }
    throw CommandError(ExitStatus::BadUse, "there is no correction '" + name + "'" + known);
}

void list(Workbench& workbench)
{
    const auto control = workbench.require(host::controls::factoryCorrections);
    const auto yesNo = [](bool yes) { return yes ? "yes" : "no"; };
    Table table({"correction", "valid", "enabled", "modifiable"});
    QJsonArray json;
    for (const FactoryCorrection correction : control->supported()) {
        const bool valid = control->isValid(correction);
        const bool enabled = control->isEnabled(correction);
        const bool modifiable = control->isModifiable(correction);
        table.addRow({nameOf(correction), yesNo(valid), yesNo(enabled), yesNo(modifiable)});
        json.append(QJsonObject{{"correction", QString::fromStdString(nameOf(correction))},
                                {"valid", valid},
                                {"enabled", enabled},
                                {"modifiable", modifiable}});
    }
    workbench.output().answer(table.toText(), {{"corrections", json}});
}

void switchTo(Workbench& workbench, const Arguments& arguments, bool enable)
{
    const auto control = workbench.require(host::controls::factoryCorrections);
    const FactoryCorrection correction = correctionNamed(*control, arguments.correction);
    const auto refuse = [&](const std::string& why) {
        return CommandError(ExitStatus::Failure,
                            nameOf(correction) + (enable ? " was not enabled" : " was not disabled") + ": " + why);
    };

    // The control refuses without a word, so it is asked first.
    if (!control->isValid(correction))
        throw refuse("its data are not valid");
    if (!control->isModifiable(correction))
        throw refuse("it is not modifiable");
    control->setEnabled(correction, enable);
    if (control->isEnabled(correction) != enable)
        throw refuse("the instrument did not take it");
    workbench.output().answer(nameOf(correction) + (enable ? " is enabled\n" : " is disabled\n"),
                              {{"correction", QString::fromStdString(nameOf(correction))}, {"enabled", enable}});
}

void declare(CLI::App& command, Arguments& arguments)
{
    command.add_option("correction", arguments.correction, "Name or number of a correction, see 'corrections ls'")
        ->required()
        ->type_name("CORRECTION");
}

} // namespace

void addCorrectionsCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App& corrections = *app.add_subcommand("corrections", "Show or switch the factory corrections");
    addSubcommand(corrections, chosen, "ls", "List the corrections that the instrument supports", list);
    addSubcommand<Arguments>(
        corrections, chosen, "enable", "Switch a correction on", declare,
        [](Workbench& workbench, const Arguments& arguments) { switchTo(workbench, arguments, true); });
    addSubcommand<Arguments>(
        corrections, chosen, "disable", "Switch a correction off", declare,
        [](Workbench& workbench, const Arguments& arguments) { switchTo(workbench, arguments, false); });
}

} // namespace tov::console

#include "console/commands/commands.h"

#include "tools/text/correctionname.h"
#include "tools/text/number.h"

namespace tov::console {

namespace {

using devices::FactoryCorrection;
using devices::service::SdkFactoryCorrectionControl;

// Throws unless the instrument supports a correction of this name or number.
FactoryCorrection correctionNamed(const SdkFactoryCorrectionControl& control, const std::string& name)
{
    const auto number = parseNumber<int>(name);
    Words known;
    for (const FactoryCorrection correction : control.supported())
        if (known.emplace_back(nameOf(correction)) == name || number == static_cast<int>(correction) + 1)
            return correction;
    throw unknown("there is no correction", name, known);
}

Words correctionNames(const Words& /*before*/, ConsoleSession& console)
{
    Words names;
    for (const FactoryCorrection correction : console.require(host::controls::factoryCorrections)->supported())
        names.push_back(nameOf(correction));
    return names;
}

void list(ConsoleSession& console)
{
    const auto control = console.require(host::controls::factoryCorrections);
    Table table({"correction", "valid", "enabled", "modifiable"});
    for (const FactoryCorrection correction : control->supported())
        table.addRow({nameOf(correction), Cell::yesNo(control->isValid(correction)),
                      Cell::yesNo(control->isEnabled(correction)), Cell::yesNo(control->isModifiable(correction))});
    console.output().answer(table, "corrections");
}

void switchTo(ConsoleSession& console, const std::string& name, bool enable)
{
    const auto control = console.require(host::controls::factoryCorrections);
    const FactoryCorrection correction = correctionNamed(*control, name);
    const auto refuse = [&](const std::string& why) {
        return Failure(nameOf(correction) + (enable ? " was not enabled" : " was not disabled") + ": " + why);
    };

    // The control refuses without a word, so it is asked first.
    if (!control->isValid(correction))
        throw refuse("its data are not valid");
    if (!control->isModifiable(correction))
        throw refuse("it is not modifiable");
    control->setEnabled(correction, enable);
    if (control->isEnabled(correction) != enable)
        throw refuse("the instrument did not take it");
    console.output().answer(nameOf(correction) + (enable ? " is enabled\n" : " is disabled\n"),
                            {{"correction", QString::fromStdString(nameOf(correction))}, {"enabled", enable}});
}

} // namespace

void addCorrectionsCommand(Command& program)
{
    Command& corrections = program.add("corrections", "Show or switch the factory corrections");
    corrections.add("ls", "List the corrections that the instrument supports").runs(list);
    const auto name = std::make_shared<std::string>();
    const auto addSwitch = [&](const char* command, const char* help, bool enable) {
        corrections.add(command, help)
            .argument("correction", *name, "CORRECTION", "Name or number of a correction, see 'corrections ls'",
                      correctionNames)
            .runs([enable](ConsoleSession& console, const std::string& given) { switchTo(console, given, enable); },
                  name);
    };
    addSwitch("enable", "Switch a correction on", true);
    addSwitch("disable", "Switch a correction off", false);
}

} // namespace tov::console

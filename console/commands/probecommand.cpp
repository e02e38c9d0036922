#include "console/commands/commands.h"

#include "console/workbench.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace tov::console {

namespace {

ExitStatus probe(Workbench& workbench, const host::ControlName& control)
{
    const bool present = workbench.session().isPresent(control);
    const std::string name(control.name);
    workbench.output().answer(name + (present ? " present\n" : " missing\n"),
                              {{"control", QString::fromStdString(name)}, {"present", present}});
    return present ? ExitStatus::Success : ExitStatus::Failure;
}

} // namespace

void addProbeCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App* const command = app.add_subcommand("probe", "Tell whether the instrument has a control");
    command->footer("Exit status: 0 present, 1 missing, 2 unknown control or bad use");

    const auto name = std::make_shared<std::string>();
    command->add_option("control", *name, "Name of the control, as 'info' lists it")->required()->type_name("CONTROL");
    command->callback(
        [&chosen, name] { chosen = [name](Workbench& workbench) { return probe(workbench, controlNamed(*name)); }; });
}

} // namespace tov::console

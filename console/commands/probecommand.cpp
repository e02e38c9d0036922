#include "console/commands/commands.h"

namespace tov::console {

namespace {

ExitStatus probe(ConsoleSession& console, const std::string& name)
{
    const bool present = console.session().isPresent(controlNamed(name));
    console.output().answer(name + (present ? " present\n" : " missing\n"),
                            {{"control", QString::fromStdString(name)}, {"present", present}});
    return present ? ExitStatus::Success : ExitStatus::Failure;
}

} // namespace

void addProbeCommand(Command& program)
{
    const auto name = std::make_shared<std::string>();
    program.add("probe", "Tell whether the instrument has a control")
        .argument("control", *name, "CONTROL", "Name of the control, as 'info' lists it", controlNames)
        .footer("Exit status: 0 present, 1 missing, 2 unknown control or bad use")
        .runs(probe, name);
}

} // namespace tov::console

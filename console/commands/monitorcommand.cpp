#include "console/commands/subcommand.h"

#include "console/notifications.h"
#include "console/watching.h"
#include "console/workbench.h"

namespace tov::console {

namespace {

using devices::FactoryCorrection;

// Does on the instrument what makes it notify.
void exercise(Workbench& workbench)
{
    const auto serialNumber = workbench.require(host::controls::serialNumber);
    const auto number = serialNumber->serialNumber();
    if (!number || !serialNumber->writeSerialNumber(*number)
        || !workbench.require(host::controls::memoryOperations)->integrityCheck())
        throw CommandError(ExitStatus::Failure, "the instrument did not do what makes it notify; try 'memory check'");
    const auto corrections = workbench.require(host::controls::factoryCorrections);
    for (const FactoryCorrection correction : corrections->supported()) {
        if (!corrections->isValid(correction) || !corrections->isModifiable(correction))
            continue;
        const bool enabled = corrections->isEnabled(correction);
        corrections->setEnabled(correction, !enabled);
        corrections->setEnabled(correction, enabled);
        break;
    }
    workbench.instrument().waitUntilQuiet();
}

void monitor(Workbench& workbench, const WatchArguments& arguments)
{
    const Notifications notifications(workbench);
    const Watch watch(arguments);
    watch.run([&] { exercise(workbench); });
}

} // namespace

void addMonitorCommand(CLI::App& app, ChosenCommand& chosen)
{
    addSubcommand<WatchArguments>(app, chosen, "monitor", "Print notifications as they come until stopped (Ctrl-C)",
                                  declareExercise, monitor);
}

} // namespace tov::console

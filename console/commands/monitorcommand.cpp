#include "console/commands/commands.h"

#include "console/notifications/notifications.h"
#include "console/notifications/watching.h"

namespace tov::console {

namespace {

using devices::FactoryCorrection;

// Does on the instrument what makes it notify.
void exercise(ConsoleSession& console)
{
    const auto serialNumber = console.require(host::controls::serialNumber);
    const auto number = serialNumber->serialNumber();
    if (!number || !serialNumber->writeSerialNumber(*number)
        || !console.require(host::controls::memoryOperations)->integrityCheck())
        throw Failure("the instrument did not do what makes it notify; try 'memory check'");
    const auto corrections = console.require(host::controls::factoryCorrections);
    for (const FactoryCorrection correction : corrections->supported()) {
        if (!corrections->isValid(correction) || !corrections->isModifiable(correction))
            continue;
        const bool enabled = corrections->isEnabled(correction);
        corrections->setEnabled(correction, !enabled);
        corrections->setEnabled(correction, enabled);
        break;
    }
    console.waitUntilQuiet();
}

void monitor(ConsoleSession& console, const WatchArguments& arguments)
{
    const Notifications notifications(console);
    const Watch watch(console, arguments);
    watch.run([&] { exercise(console); });
}

} // namespace

void addMonitorCommand(Command& program)
{
    const auto arguments = std::make_shared<WatchArguments>();
    program.add("monitor", "Print notifications as they come until stopped (Ctrl-C)")
        .optional("--exercise", &arguments->exercise, "COUNT", exerciseHelp)
        .runs(monitor, arguments);
}

} // namespace tov::console

#include "console/commands/commands.h"

#include "console/notifications/notifications.h"
#include "console/notifications/watching.h"

#include <algorithm>
#include <iterator>
#include <memory>

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

struct Arguments : WatchArguments
{
    std::vector<std::string> expected;
};

void monitor(ConsoleSession& console, const Arguments& arguments)
{
    std::vector<const host::ControlName*> expected;
    std::ranges::transform(arguments.expected, std::back_inserter(expected),
                           [](const std::string& name) { return &controlNamed(name); });
    const Watch watch(console, arguments);
    const auto log = std::make_shared<CsvLog>(arguments.csv, NotificationLines::headings);
    const auto requireWritten = [&] { log->requireWritten(); };
    const Notifications notifications(console, log);
    std::vector<host::ControlName> followed;
    std::ranges::copy_if(host::controls::all, std::back_inserter(followed),
                         [&](const host::ControlName& control) { return console.session().isPresent(control); });
    watch.run([&] { exercise(console); }, requireWritten);
    requireWritten();
    for (const host::ControlName& control : followed) // they may have gone and come again
        requireStillThere(console, control);

    std::string silent;
    for (const host::ControlName* control : expected)
        if (!notifications.hasNotified(*control))
            silent.append(silent.empty() ? "" : ", ").append(control->name);
    if (!silent.empty())
        throw Failure(silent + " did not notify");
}

} // namespace

void addMonitorCommand(Command& program)
{
    const auto arguments = std::make_shared<Arguments>();
    Command& monitoring = program.add("monitor", "Print notifications as they come until stopped (Ctrl-C)");
    addWatchOptions(monitoring, *arguments);
    monitoring
        .optional("--expect", &arguments->expected, "CONTROL",
                  "End with 1 unless CONTROL has notified; may be repeated", controlNames)
        .runs(monitor, arguments);
}

} // namespace tov::console

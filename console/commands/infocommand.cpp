#include "console/commands/commands.h"

#include "host/loadedlibrary.h"
#include "service/version.h"
#include "tools/text/values.h"

#include <algorithm>

namespace tov::console {

namespace {

constexpr int keyDigits = 16;

// A row for every registered entry, whether this program has a name for it or not.
Table registeredControls(const host::InstrumentSession& session)
{
    Table table({"control", "registry-key", "sdk-key", "state"});
    for (const auto& entry : session.registry().entries()) {
        const auto known = std::ranges::find_if(
            host::controls::all, [&](const host::ControlName& control) { return control.keys.registry == entry.key; });
        if (known == host::controls::all.end())
            table.addRow({"?", hexadecimal(entry.key, keyDigits), "?", "unknown to this program"});
        else
            table.addRow({std::string(known->name), hexadecimal(entry.key, keyDigits),
                          hexadecimal(known->keys.sdk.value, keyDigits),
                          session.isPresent(*known) ? Cell("present", "present", Cell::Tone::Good)
                                                    : Cell("missing", "missing", Cell::Tone::Bad)});
    }
    return table;
}

void info(ConsoleSession& console)
{
    const std::string library = host::loadedLibraryPath().toStdString();
    const Table controls = registeredControls(console.session());

    const std::string version = devices::service::version;
    const host::ProviderDescription& provider = console.choice().provider;
    const auto& [id, model, serialNumber, description] = console.instrument();
    const std::string instrument = (model.isEmpty() ? id : model).toStdString();

    const std::string text =
        "service-console  " + version + "\nDevicesService   built with " + version + "\n                 loaded from "
        + library + "\nQt               " + qVersion() + "\nProvider         " + provider.name.toStdString() + " "
        + provider.version.toStdString() + "\n                 loaded from " + provider.file.toStdString()
        + "\nInstrument       " + instrument + "\n\n" + console.output().shown(controls);

    console.output().answer(text, {{"program", devices::service::version},
                                   {"library-built-with", devices::service::version},
                                   {"library-path", QString::fromStdString(library)},
                                   {"qt", qVersion()},
                                   {"provider", provider.name},
                                   {"provider-version", provider.version},
                                   {"provider-path", provider.file},
                                   {"instrument", QString::fromStdString(instrument)},
                                   {"controls", console.output().rows(controls)}});
}

} // namespace

void addInfoCommand(Command& program)
{
    program.add("info", "Show versions, the instrument and every registered control").runs(info);
}

} // namespace tov::console

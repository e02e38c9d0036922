#include "console/commands/commands.h"

#include "service/version.h"

namespace tov::console {

std::string exitStatusesHelp()
{
    std::string lines = "Exit status:\n";
    for (const auto& [status, meaning] : exitStatusMeanings)
        lines.append("  ").append(std::to_string(static_cast<int>(status))).append("  ").append(meaning).append("\n");
    return lines;
}

Command allCommands(CommandSet commands, Options& options)
{
    Command program("service-console", "Works with the service functions of a vector network analyser.");
    program.flag("--json", options.json, "Answer in JSON on standard output, and in an error on standard error")
        .flag("--yes", options.yes, "Go on with what cannot be undone, without asking")
        .optional("--columns", &options.columns, "NAME,...", "Show only these columns of tables, in this order")
        .optional("--filter", &options.filter, "TEXT", "Show only rows of tables that contain TEXT")
        .optional("--color", &options.color, "WHEN", "Colour tables: auto (on a terminal), always or never",
                  [](const Words&) { return Words{"always", "auto", "never"}; });
    for (const auto add :
         {addInfoCommand,   addProbeCommand,    addProvidersCommand,   addInstrumentsCommand, addFilesCommand,
          addMemoryCommand, addPotsCommand,     addSerialCommand,      addUsbCommand,         addTermsCommand,
          addIfswCommand,   addPowerCalCommand, addCorrectionsCommand, addCalibrationCommand, addTemperatureCommand,
          addTuneCommand,   addMonitorCommand,  addReportCommand,      addBackupCommand,      addRestoreCommand,
          addDiffCommand})
        add(program);
    if (commands == CommandSet::Shell)
        return program;

    program.footer(exitStatusesHelp())
        .takes({.name = "--version", .target = Command::Version{devices::service::version}})
        .takes({.name = "--provider",
                .target = &options.provider,
                .type = "NAME-OR-FILE[:OPTION=VALUE,...]",
                .help = "Open the instrument by this provider; 'providers' lists them (simulated)",
                .choices = providerNames,
                .mustNotBeEmpty = "a provider is needed"})
        .takes({.name = "--state",
                .target = &options.stateFile,
                .type = "FILE",
                .help = "Use the instrument that is kept in FILE, a new one if there is none",
                .mustNotBeEmpty = "a file name is needed"})
        .takes({.name = "--wait",
                .target = &options.wait,
                .type = "SECONDS",
                .help = "Wait so long while another command uses the FILE (30)",
                .mustNotBeEmpty = "a number of seconds is needed"})
        .optional("--missing", &options.missing, "CONTROL",
                  "Let the simulated instrument lack CONTROL; may be repeated", controlNames);
    addShellCommand(program);
    addDemoCommand(program);
    addHelpCommand(program, [] {
        Options unused;
        return allCommands(CommandSet::Program, unused);
    });
    return program;
}

Words controlNames(const Words& /*before*/)
{
    Words names;
    for (const host::ControlName& control : host::controls::all)
        names.emplace_back(control.name);
    return names;
}

} // namespace tov::console

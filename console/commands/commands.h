#pragma once

#include "console/commandline/command.h"
#include "console/session/consolesession.h"

namespace tov::console {

/// Which commands and options a command line has.
enum class CommandSet {
    Program, ///< all of them
    Shell,   ///< what makes sense while the shell keeps its instrument
};

/// All commands. Understanding a command line fills `options`, which must outlive it.
Command allCommands(CommandSet commands, Options& options);

// Each of these adds one command to `program`.
void addInfoCommand(Command& program);
void addProbeCommand(Command& program);
void addProvidersCommand(Command& program);
void addInstrumentsCommand(Command& program);
void addFilesCommand(Command& program);
void addMemoryCommand(Command& program);
void addPotsCommand(Command& program);
void addSerialCommand(Command& program);
void addUsbCommand(Command& program);
void addTermsCommand(Command& program);
void addIfswCommand(Command& program);
void addPowerCalCommand(Command& program);
void addCorrectionsCommand(Command& program);
void addCalibrationCommand(Command& program);
void addTemperatureCommand(Command& program);
void addTuneCommand(Command& program);
void addMonitorCommand(Command& program);
void addReportCommand(Command& program);
void addBackupCommand(Command& program);
void addRestoreCommand(Command& program);
void addDiffCommand(Command& program);
void addShellCommand(Command& program);
void addDemoCommand(Command& program);

/// Adds `help`, which shows the help of the program that `made` gives.
void addHelpCommand(Command& program, const std::function<Command()>& made);

/// What can stand where a control is named.
Words controlNames(const Words& before);

/// What can stand where a provider is named.
Words providerNames(const Words& before);

/// The lines of the help that tell how the program ends.
std::string exitStatusesHelp();

} // namespace tov::console

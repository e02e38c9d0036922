#pragma once

#include "console/exitstatus.h"

#include <functional>

namespace CLI {
class App;
}

namespace tov::console {

class Workbench;

/// The command that the user chose, with its arguments, ready to run.
using ChosenCommand = std::function<ExitStatus(Workbench&)>;

// Each of these adds one command to the command line. When the user calls it, it puts itself into
// `chosen`; both arguments must outlive the parsing.
void addInfoCommand(CLI::App& app, ChosenCommand& chosen);
void addProbeCommand(CLI::App& app, ChosenCommand& chosen);
void addFilesCommand(CLI::App& app, ChosenCommand& chosen);
void addMemoryCommand(CLI::App& app, ChosenCommand& chosen);
void addPotsCommand(CLI::App& app, ChosenCommand& chosen);
void addSerialCommand(CLI::App& app, ChosenCommand& chosen);
void addUsbCommand(CLI::App& app, ChosenCommand& chosen);
void addTermsCommand(CLI::App& app, ChosenCommand& chosen);
void addLoLeakageCommand(CLI::App& app, ChosenCommand& chosen);
void addYqCommand(CLI::App& app, ChosenCommand& chosen);
void addIfswCommand(CLI::App& app, ChosenCommand& chosen);
void addPowerCalCommand(CLI::App& app, ChosenCommand& chosen);
void addCorrectionsCommand(CLI::App& app, ChosenCommand& chosen);
void addCalibrationCommand(CLI::App& app, ChosenCommand& chosen);
void addTemperatureCommand(CLI::App& app, ChosenCommand& chosen);
void addTuneCommand(CLI::App& app, ChosenCommand& chosen);
void addMonitorCommand(CLI::App& app, ChosenCommand& chosen);
void addShellCommand(CLI::App& app, ChosenCommand& chosen);
void addDemoCommand(CLI::App& app, ChosenCommand& chosen);

} // namespace tov::console

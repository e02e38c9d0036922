#include "console/commands/plancommand.h"

#include "console/calibrationfiles.h"

namespace tov::console {

namespace {

struct Arguments
{
    std::string localFile;
};

void save(Workbench& workbench, const Arguments& arguments)
{
    PowerFile file = readPowerFile(arguments.localFile);
    const auto count = file.points.size();
    workbench.require(host::controls::factoryPowerCalibration)
        ->saveCalibrationData(file.time, file.parameter, std::move(file.points));
    workbench.output().answer("saved " + std::to_string(count) + " points\n", {{"points", static_cast<qint64>(count)}});
}

} // namespace

void addPowerCalCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App& powerCal = *app.add_subcommand("power-cal", "Calibrate the power of the Yq module");
    addPlanCommand(powerCal, chosen, host::controls::factoryPowerCalibration);
    addSubcommand<Arguments>(
        powerCal, chosen, "save", "Save the calibration data of a file of this computer",
        [](CLI::App& command, Arguments& arguments) { addLocalFile(command, arguments.localFile); }, save)
        ->footer(powerFileFormat);
}

} // namespace tov::console

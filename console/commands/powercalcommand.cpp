#include "console/commands/plancommand.h"

#include "tools/files/calibrationfiles.h"

namespace tov::console {

namespace {

void save(ConsoleSession& console, const std::string& localFile)
{
    PowerFile file = readPowerFile(localFile);
    const auto count = file.points.size();
    console.require(host::controls::factoryPowerCalibration)
        ->saveCalibrationData(file.time, file.parameter, std::move(file.points));
    console.output().answer("saved " + std::to_string(count) + " points\n", {{"points", static_cast<qint64>(count)}});
}

} // namespace

void addPowerCalCommand(Command& program)
{
    Command& powerCal = program.add("power-cal", "Calibrate the power of the Yq module");
    addPlanCommand(powerCal, host::controls::factoryPowerCalibration);
    const auto localFile = std::make_shared<std::string>();
    powerCal.add("save", "Save the calibration data of a file of this computer")
        .argument("file", *localFile, "FILE", "File of this computer")
        .footer(powerFileFormat)
        .runs(save, localFile);
}

} // namespace tov::console

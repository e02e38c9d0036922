#include "console/commands/plancommand.h"

#include "tools/files/calibrationfiles.h"

namespace tov::console {

namespace {

void save(ConsoleSession& console, const std::string& localFile)
{
    auto data = readIfswFile(localFile);
    std::size_t count = data.values.size();
    for (const auto& group : data.groups)
        count += group.first.size() + group.second.size();
    console.require(host::controls::ifswCalibration)->saveCalibrationData(std::move(data));
    console.output().answer("saved " + std::to_string(count) + " records\n", {{"records", static_cast<qint64>(count)}});
}

} // namespace

void addIfswCommand(Command& program)
{
    Command& ifsw = program.add("ifsw", "Calibrate the IF switch of the Yq module");
    addPlanCommand(ifsw, host::controls::ifswCalibration);
    const auto localFile = std::make_shared<std::string>();
    ifsw.add("save", "Save the calibration data of a file of this computer")
        .argument("file", *localFile, "FILE", "File of this computer")
        .footer(ifswFileFormat)
        .runs(save, localFile);
}

} // namespace tov::console

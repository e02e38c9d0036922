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
    auto data = readIfswFile(arguments.localFile);
    std::size_t count = data.values.size();
    for (const auto& group : data.groups)
        count += group.first.size() + group.second.size();
    workbench.require(host::controls::ifswCalibration)->saveCalibrationData(std::move(data));
    workbench.output().answer("saved " + std::to_string(count) + " records\n",
                              {{"records", static_cast<qint64>(count)}});
}

} // namespace

void addIfswCommand(CLI::App& app, ChosenCommand& chosen)
{
    CLI::App& ifsw = *app.add_subcommand("ifsw", "Calibrate the IF switch of the Yq module");
    addPlanCommand(ifsw, chosen, host::controls::ifswCalibration);
    addSubcommand<Arguments>(
        ifsw, chosen, "save", "Save the calibration data of a file of this computer",
        [](CLI::App& command, Arguments& arguments) { addLocalFile(command, arguments.localFile); }, save)
        ->footer(ifswFileFormat);
}

} // namespace tov::console

#pragma once

#include "console/commands/subcommand.h"

#include "console/csvfile.h"
#include "console/workbench.h"

namespace tov::console {

/// Enough digits to read the same number back.
inline std::string exactly(double number)
{
    return QString::number(number, 'g', 17).toStdString();
}

/// Adds the command that shows on which frequencies the calibration of `kind` is measured.
template <typename Adapter>
void addPlanCommand(CLI::App& parent, ChosenCommand& chosen, const host::Control<Adapter>& kind)
{
    struct Arguments
    {
        std::string localFile;
    };

    addSubcommand<Arguments>(
        parent, chosen, "plan", "Show the frequency plan on which the calibration is measured",
        [](CLI::App& command, Arguments& arguments) {
            command.add_option("file", arguments.localFile, "Write it to this file instead")->type_name("FILE");
        },
        [&kind](Workbench& workbench, const Arguments& arguments) {
            const std::vector<std::string> headings{"start", "stop", "points"};
            std::vector<std::vector<std::string>> rows{headings};
            Table table(headings);
            QJsonArray json;
            for (const auto& segment : workbench.require(kind)->frequencyPlan().segments) {
                const std::string points = std::to_string(segment.points);
                table.addRow({toText(segment.start), toText(segment.stop), points});
                rows.push_back({exactly(segment.start), exactly(segment.stop), points});
                json.append(QJsonObject{{"start", segment.start}, {"stop", segment.stop}, {"points", segment.points}});
            }
            if (!arguments.localFile.empty())
                writeCsvFile(arguments.localFile, rows);
            workbench.output().answer(arguments.localFile.empty()
                                          ? table.toText()
                                          : "written with " + std::to_string(rows.size() - 1) + " segments\n",
                                      {{"segments", json}});
        });
}

} // namespace tov::console

#pragma once

#include "console/commands/commands.h"

#include "console/commandline/localtarget.h"
#include "tools/files/csvfile.h"
#include "tools/text/values.h"

namespace tov::console {

/// Adds the command that shows on which frequencies the calibration of `kind` is measured.
template <typename Adapter>
void addPlanCommand(Command& parent, const host::Control<Adapter>& kind)
{
    const auto target = std::make_shared<LocalTarget>();
    const auto show = [&kind](ConsoleSession& console, const LocalTarget& file) {
        std::vector<std::vector<std::string>> rows{{"start", "stop", "points"}};
        Table table({{"start (Hz)", "start"}, {"stop (Hz)", "stop"}, "points"});
        for (const auto& segment : console.require(kind)->frequencyPlan().segments) {
            rows.push_back({toText(segment.start), toText(segment.stop), std::to_string(segment.points)});
            table.addRow({{rows.back()[0], segment.start}, {rows.back()[1], segment.stop}, segment.points});
        }
        if (!file.path.empty())
            writeCsvFile(file, rows);
        if (file.path.empty())
            console.output().answer(table, "segments");
        else if (!file.isStandardOutput())
            console.output().answer("written with " + std::to_string(rows.size() - 1) + " segments\n",
                                    {{"segments", table.toJson()}});
    };
    addLocalTarget(
        parent.add("plan", "Show the frequency plan on which the calibration is measured").runs(show, target), *target,
        false);
}

} // namespace tov::console

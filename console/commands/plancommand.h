#pragma once

#include "console/commands/commands.h"

#include "console/files/csvfile.h"
#include "console/text/values.h"

namespace tov::console {

/// Enough digits to read the same number back.
inline std::string exactly(double number)
{
    return QString::number(number, 'g', 17).toStdString();
}

/// Adds the command that shows on which frequencies the calibration of `kind` is measured.
template <typename Adapter>
void addPlanCommand(Command& parent, const host::Control<Adapter>& kind)
{
    const auto localFile = std::make_shared<std::string>();
    const auto show = [&kind](ConsoleSession& console, const std::string& file) {
        const std::vector<std::string> headings{"start", "stop", "points"};
        std::vector<std::vector<std::string>> rows{headings};
        Table table(headings);
        QJsonArray json;
        for (const auto& segment : console.require(kind)->frequencyPlan().segments) {
            const std::string points = std::to_string(segment.points);
            table.addRow({toText(segment.start), toText(segment.stop), points});
            rows.push_back({exactly(segment.start), exactly(segment.stop), points});
            json.append(QJsonObject{{"start", segment.start}, {"stop", segment.stop}, {"points", segment.points}});
        }
        if (!file.empty())
            writeCsvFile(file, rows);
        console.output().answer(file.empty() ? table.toText()
                                             : "written with " + std::to_string(rows.size() - 1) + " segments\n",
                                {{"segments", json}});
    };
    parent.add("plan", "Show the frequency plan on which the calibration is measured")
        .optional("file", localFile.get(), "FILE", "Write it to this file instead")
        .runs(show, localFile);
}

} // namespace tov::console

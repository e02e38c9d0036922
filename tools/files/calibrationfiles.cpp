#include "tools/files/calibrationfiles.h"

#include "tools/files/csvfile.h"
#include "tools/files/timestamp.h"

namespace tov::inline tools {

using devices::service::SdkYqIfswCalibrationControl;

const char* const ifswFileFormat = R"(FILE is comma-separated values:
  vector,value1,value2,value3
  1,1e9,,                        vector 1 has one value a line
  2,0.5,-0.25,1                  vectors 2 to 7 have three
Within a vector the order of the lines counts. A vector without lines is empty. Empty lines and those that
begin with # are left out.
)";

const char* const powerFileFormat = R"(FILE is comma-separated values:
  time,2026-01-31T12:00:00Z      when the points were measured
  parameter,1.5
  value1,value2,value3,value4,value5,value6,value7,value8,value9
  1e9,-10.5,0.25,1,0,20,3,0.5,0.125
The values 4, 5 and 7 are whole numbers from 0 to 255. Empty lines and those that begin with # are left out.
)";

namespace {

// The rows that give one value for the whole file, such as "time,2026-01-31T12:00:00Z".
CsvField takeValue(std::vector<CsvRow>& rows, const std::string& path, const std::string& name)
{
    if (rows.empty())
        failAtEnd(path, "'" + name + "'");
    const CsvRow row = rows.front();
    if (row[0].text != name)
        failAt(row[0], "'" + name + "'");
    expectFields(row, 2);
    rows.erase(rows.begin());
    return row[1];
}

void addIfswRow(SdkYqIfswCalibrationControl::IfswCalibrationData& data, const CsvRow& row)
{
    expectFields(row, 4);
    const auto vector = row[0].number<unsigned int>();
    if (vector < 1 || vector > 7)
        failAt(row[0], "a vector from 1 to 7");
    if (vector == 1) {
        for (const std::size_t empty : {2U, 3U})
            if (!row[empty].text.empty())
                failAt(row[empty], "nothing, because vector 1 has one value a line");
        data.values.push_back(row[1].number<double>());
        return;
    }
    auto& group = data.groups.at((vector - 2) / 2);
    (vector % 2 == 0 ? group.first : group.second)
        .push_back({row[1].number<double>(), row[2].number<double>(), row[3].number<double>()});
}

} // namespace

SdkYqIfswCalibrationControl::IfswCalibrationData readIfswFile(const std::string& path)
{
    std::vector<CsvRow> rows = readCsvFile(path);
    takeHeading(rows, path, {"vector", "value1", "value2", "value3"});
    if (rows.empty())
        failAtEnd(path, "a line of values");
    SdkYqIfswCalibrationControl::IfswCalibrationData data;
    for (const CsvRow& row : rows)
        addIfswRow(data, row);
    return data;
}

PowerFile readPowerFile(const std::string& path)
{
    std::vector<CsvRow> rows = readCsvFile(path);
    PowerFile file;

    const CsvField timeField = takeValue(rows, path, "time");
    const auto time = parseTimestamp(QString::fromStdString(timeField.text));
    if (!time)
        failAt(timeField, timestampForm);
    file.time = std::chrono::sys_seconds(std::chrono::seconds(time->toSecsSinceEpoch()));
    file.parameter = takeValue(rows, path, "parameter").number<double>();
    takeHeading(rows, path, {"value1", "value2", "value3", "value4", "value5", "value6", "value7", "value8", "value9"});
    if (rows.empty())
        failAtEnd(path, "a line of values");
    for (const CsvRow& row : rows) {
        expectFields(row, 9);
        file.points.push_back({row[0].number<double>(), row[1].number<float>(), row[2].number<float>(),
                               row[3].number<std::uint8_t>(), row[4].number<std::uint8_t>(), row[5].number<float>(),
                               row[6].number<std::uint8_t>(), row[7].number<float>(), row[8].number<float>()});
    }
    return file;
}

} // namespace tov::inline tools

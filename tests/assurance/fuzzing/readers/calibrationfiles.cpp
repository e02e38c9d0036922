// The data files of the two calibrations: what is read and written again reads back the same.

#include "tools/files/calibrationfiles.h"

#include "fuzzer.h"
#include "readers/memoryfile.h"
#include "tools/files/csvfile.h"

#include <QDateTime>

#include <array>
#include <charconv>
#include <cstdint>

namespace tov::testing {

namespace {

using Rows = std::vector<std::vector<std::string>>;

std::string written(std::floating_point auto number)
{
    std::array<char, 64> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

void write(Rows rows)
{
    if (isWritingDamaged() && rows.size() > 4)
        rows.pop_back();
    tools::writeCsvFile({"file", true}, rows);
}

Rows rowsOf(const devices::service::SdkYqIfswCalibrationControl::IfswCalibrationData& data)
{
    Rows rows{{"vector", "value1", "value2", "value3"}};
    for (const double value : data.values)
        rows.push_back({"1", written(value), "", ""});
    for (std::size_t group = 0; group < data.groups.size(); ++group)
        for (const bool second : {false, true})
            for (const auto& record : second ? data.groups.at(group).second : data.groups.at(group).first)
                rows.push_back({std::to_string(2 * group + (second ? 3 : 2)), written(record.value1),
                                written(record.value2), written(record.value3)});
    return rows;
}

Rows rowsOf(const tools::PowerFile& file)
{
    const QDateTime time = QDateTime::fromSecsSinceEpoch(file.time.time_since_epoch().count(), Qt::UTC);
    Rows rows{{"time", time.toString(Qt::ISODate).toStdString()},
              {"parameter", written(file.parameter)},
              {"value1", "value2", "value3", "value4", "value5", "value6", "value7", "value8", "value9"}};
    for (const auto& point : file.points)
        rows.push_back({written(point.value1), written(point.value2), written(point.value3),
                        std::to_string(point.value4), std::to_string(point.value5), written(point.value6),
                        std::to_string(point.value7), written(point.value8), written(point.value9)});
    return rows;
}

void readsBackWhatItRead(const QByteArray& contents, auto read)
{
    const auto first = readFrom(contents, read);
    if (!first)
        return;
    const Rows rows = rowsOf(*first);
    write(rows);
    const auto again = readFrom(QByteArray(memoryFile), read);
    require(again && rowsOf(*again) == rows, "calibration data that are written again read back the same");
}

} // namespace

} // namespace tov::testing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tov;
    const QByteArray contents(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    testing::readsBackWhatItRead(contents, tools::readIfswFile);
    testing::readsBackWhatItRead(contents, tools::readPowerFile);
    return 0;
}

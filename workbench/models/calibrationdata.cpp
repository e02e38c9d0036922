#include "workbench/models/calibrationdata.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <array>
#include <utility>

namespace tov::workbench {

using devices::service::SdkYqFactoryPowerCalibrationControl;
using devices::service::SdkYqIfswCalibrationControl;
namespace controls = host::controls;

namespace {

using IfswRecord = SdkYqIfswCalibrationControl::IfswCalibrationRecord;
using PowerPoint = SdkYqFactoryPowerCalibrationControl::PowerCalPoint;

QString translated(const char* text)
{
    return QCoreApplication::translate("tov::workbench::CalibrationData", text);
}

QString valueName(std::size_t number)
{
    return translated("value %1").arg(number);
}

template <typename Element, typename ValueOf>
Curve overPlace(const QString& name, const std::vector<Element>& list, ValueOf valueOf)
{
    Curve curve{name, {}};
    curve.points.reserve(static_cast<qsizetype>(list.size()));
    for (const Element& element : list)
        curve.points.append({static_cast<double>(curve.points.size() + 1), valueOf(element)});
    return curve;
}

CurveSheet sheetOf(const std::vector<IfswRecord>& records, std::size_t vector)
{
    return {translated("Vector %1").arg(vector),
            translated("Place in the list"),
            translated("Value"),
            {overPlace(valueName(1), records, [](const IfswRecord& record) { return record.value1; }),
             overPlace(valueName(2), records, [](const IfswRecord& record) { return record.value2; }),
             overPlace(valueName(3), records, [](const IfswRecord& record) { return record.value3; })}};
}

template <typename Adapter>
auto planReader(const host::Control<Adapter>& kind)
{
    return [kind](Instrument& instrument, const QString& what) {
        return instrument.call(kind, what, [](Adapter& control) {
            std::vector<PlanSegment> plan;
            for (const auto& segment : control.frequencyPlan().segments)
                plan.push_back({segment.start, segment.stop, segment.points});
            return plan;
        });
    };
}

CalibrationData ifswData(const std::string& path)
{
    auto data = readIfswFile(path);
    std::size_t count = data.values.size();
    for (const auto& group : data.groups)
        count += group.first.size() + group.second.size();
    return {.facts = translated("%1 records").arg(count),
            .sheets = sheetsOf(data),
            .save = [data = std::move(data)](Instrument& instrument, const QString& what) {
                return instrument.call(controls::ifswCalibration, what, [data](SdkYqIfswCalibrationControl& control) {
                    control.saveCalibrationData(data);
                });
            }};
}

CalibrationData powerData(const std::string& path)
{
    auto file = readPowerFile(path);
    const auto time = QDateTime::fromSecsSinceEpoch(file.time.time_since_epoch().count());
    return {.facts = translated("%1 points, measured %2, parameter %3")
                         .arg(file.points.size())
                         .arg(QLocale().toString(time, QLocale::ShortFormat))
                         .arg(file.parameter),
            .sheets = sheetsOf(file),
            .save = [file = std::move(file)](Instrument& instrument, const QString& what) {
                return instrument.call(controls::factoryPowerCalibration, what,
                                       [file](SdkYqFactoryPowerCalibrationControl& control) {
                                           control.saveCalibrationData(file.time, file.parameter, file.points);
                                       });
            }};
}

} // namespace

CalibrationKind ifswCalibrationKind()
{
    return {.control = controls::ifswCalibration,
            .fileTitle = translated("IF switch calibration data"),
            .readFile = ifswData,
            .readPlan = planReader(controls::ifswCalibration)};
}

CalibrationKind factoryPowerCalibrationKind()
{
    return {.control = controls::factoryPowerCalibration,
            .fileTitle = translated("Factory power calibration data"),
            .readFile = powerData,
            .readPlan = planReader(controls::factoryPowerCalibration)};
}

RowsModel::Rows rowsOf(const std::vector<PlanSegment>& plan)
{
    RowsModel::Rows rows;
    rows.reserve(plan.size());
    for (const PlanSegment& segment : plan)
        rows.push_back({segment.start, segment.stop, segment.points});
    return rows;
}

std::vector<PlotBand> bandsOf(const std::vector<PlanSegment>& plan)
{
    std::vector<PlotBand> bands;
    bands.reserve(plan.size());
    for (const PlanSegment& segment : plan)
        bands.push_back({inGigahertz(segment.start), inGigahertz(segment.stop), static_cast<double>(segment.points)});
    return bands;
}

std::vector<CurveSheet> sheetsOf(const SdkYqIfswCalibrationControl::IfswCalibrationData& data)
{
    std::vector<CurveSheet> sheets;
    if (!data.values.empty())
        sheets.push_back({translated("Vector %1").arg(1),
                          translated("Place in the list"),
                          translated("Value"),
                          {overPlace(valueName(1), data.values, [](double value) { return value; })}});
    std::size_t vector = 1;
    for (const auto& group : data.groups)
        for (const auto* const records : {&group.first, &group.second})
            if (++vector; !records->empty())
                sheets.push_back(sheetOf(*records, vector));
    return sheets;
}

std::vector<CurveSheet> sheetsOf(const PowerFile& file)
{
    static const std::array<double (*)(const PowerPoint&), 8> values = {
        [](const PowerPoint& point) { return static_cast<double>(point.value2); },
        [](const PowerPoint& point) { return static_cast<double>(point.value3); },
        [](const PowerPoint& point) { return static_cast<double>(point.value4); },
        [](const PowerPoint& point) { return static_cast<double>(point.value5); },
        [](const PowerPoint& point) { return static_cast<double>(point.value6); },
        [](const PowerPoint& point) { return static_cast<double>(point.value7); },
        [](const PowerPoint& point) { return static_cast<double>(point.value8); },
        [](const PowerPoint& point) { return static_cast<double>(point.value9); },
    };
    std::vector<CurveSheet> sheets;
    sheets.reserve(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        Curve curve{valueName(i + 2), {}};
        for (const PowerPoint& point : file.points)
            curve.points.append({point.value1, values.at(i)(point)});
        sheets.push_back({translated("Value %1").arg(i + 2), translated("Value 1"), curve.name, {curve}});
    }
    return sheets;
}

} // namespace tov::workbench

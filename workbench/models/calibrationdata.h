#pragma once

#include "host/controls.h"
#include "tools/files/calibrationfiles.h"
#include "workbench/instrument/instrument.h"
#include "workbench/models/curves.h"
#include "workbench/models/rowsmodel.h"

#include <QFuture>
#include <QString>

#include <functional>
#include <string>
#include <vector>

namespace tov::workbench {

/// What a file of calibration data holds, as it is looked at before it is saved in the instrument.
struct CalibrationData
{
    QString facts; ///< in a line
    std::vector<CurveSheet> sheets;
    std::function<QFuture<void>(Instrument&, const QString& what)> save; ///< asks the instrument to save it
};

/// A part of a frequency plan, in Hz.
struct PlanSegment
{
    double start = 0.0;
    double stop = 0.0;
    int points = 0;
};

/// One of the calibrations that have a frequency plan and are saved.
struct CalibrationKind
{
    host::ControlName control;
    QString fileTitle;                                           ///< of the dialog that asks for a file
    std::function<CalibrationData(const std::string&)> readFile; ///< throws `Failure`; *any thread*
    std::function<QFuture<std::vector<PlanSegment>>(Instrument&, const QString& what)> readPlan;
};

CalibrationKind ifswCalibrationKind();
CalibrationKind factoryPowerCalibrationKind();

/// The plan as a table with start and stop in Hz and the points, and as bands over GHz that stand as high as they have
/// points.
RowsModel::Rows rowsOf(const std::vector<PlanSegment>& plan);
std::vector<PlotBand> bandsOf(const std::vector<PlanSegment>& plan);

/// Each list of the data as a sheet, against the place in the list; empty lists have none.
std::vector<CurveSheet> sheetsOf(const devices::service::SdkYqIfswCalibrationControl::IfswCalibrationData& data);

/// Each value of the points, from the second on, as a sheet against the first one.
std::vector<CurveSheet> sheetsOf(const PowerFile& file);

} // namespace tov::workbench

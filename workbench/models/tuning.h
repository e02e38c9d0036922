#pragma once

#include "tools/tuning/tuning.h"
#include "workbench/instrument/instrument.h"

#include <QJsonValue>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace tov::workbench {

/// A setting as it was read.
struct ReadSetting
{
    QJsonValue value;
    std::optional<TakenNumbers> allowed; ///< where the instrument tells which numbers it takes
};

/// All settings of a module, in the order of the module's table.
using ReadModule = std::vector<ReadSetting>;

/// Reads all settings of a module. Thread: *any thread*; takes as long as the instrument does.
ReadModule readModule(const TuneModule& module, TunedAdapter adapter);

/// The module's name for people.
QString nameOf(const TuneModule& module);

/// A value as people read it, in their language's digits.
QString shownValue(const QJsonValue& value);

/// A point of a plot, over the frequency.
struct PowerPoint
{
    double frequency; // Hz
    double code;
};

/// Rows of frequency and power code.
struct PowerCurve
{
    QString name;
    std::vector<PowerPoint> points;
};

/// What is used from one frequency to another.
struct Band
{
    QString name;
    double from;              // Hz
    std::optional<double> to; // Hz; nothing: without an end
};

/// The curves among the settings of a module; those without a row are left out.
std::vector<PowerCurve> powerCurves(const TuneModule& module, const ReadModule& read);

/// The bands among them, by frequency; those without a begin are left out.
std::vector<Band> bands(const TuneModule& module, const ReadModule& read);

/// Calls `function` with the adapter of a module, as `Instrument::call()` does.
template <typename Function>
auto callModule(Instrument& instrument, const TuneModule& module, const QString& what, Function function)
{
    return instrument.callBy<TunedAdapter>(*module.control, module.run, what, std::move(function));
}

} // namespace tov::workbench

#pragma once

#include "vna/errorterms.h"

#include <QList>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <QVariantList>

#include <vector>

namespace tov::workbench {

/// A line of a plot.
struct Curve
{
    QString name;
    QList<QPointF> points; ///< in the order in which they are connected

    friend bool operator==(const Curve&, const Curve&) = default;
};

/// The curves that are looked at together.
struct CurveSheet
{
    QString name;
    QString xTitle; ///< with its unit, if that is known
    QString yTitle; ///< the same
    std::vector<Curve> curves;
};

/// Curves as a table.
struct CurveTable
{
    QStringList headings; ///< that of the x axis, and the names of the curves
    std::vector<QVariantList> rows;
};

/// A row for each x, ascending, with the y of every curve; without a value where a curve has no point there. The y are
/// rounded to thousandths.
CurveTable tableOf(const CurveSheet& sheet);

/// A band of frequencies, and how high it stands in a plot.
struct PlotBand
{
    double from = 0.0;
    double to = 0.0;
    double height = 0.0;

    friend bool operator==(const PlotBand&, const PlotBand&) = default;
};

/// A frequency in the unit of the axes, of one in Hz.
constexpr double inGigahertz(double frequency)
{
    return frequency / 1e9;
}

/// What the axis of those is called.
QString gigahertzTitle();

/// The magnitudes of error terms in dB over frequency: a sheet with all of them, and where there are several ports or
/// paths one for each. Zeros have no place on that scale and are left out; so are values without a frequency.
std::vector<CurveSheet> magnitudesOf(const vna::ErrorTerms& terms);

} // namespace tov::workbench

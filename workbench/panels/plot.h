#pragma once

#include "workbench/models/curves.h"
#include "workbench/panels/plotview.h"

#include <QString>

#include <vector>

class QAbstractAxis;
class QAreaSeries;
class QLineSeries;
class QValueAxis;

namespace tov::workbench {

/// Draws curves, levels and bands. Each curve has a colour by its place, and every fourth the same dashes.
class Plot final : public PlotView
{
    Q_OBJECT

public:
    /// `name` is for those who cannot see it. `x` becomes the horizontal axis; a plain one without it.
    explicit Plot(const QString& name, QWidget* parent, QAbstractAxis* x = nullptr);

    /// Shows these curves instead of those before, and what the axes are called.
    void show(const CurveSheet& sheet);

    /// The same with curves alone.
    void setCurves(const std::vector<Curve>& curves);

    /// Draws a horizontal dashed line at each of these heights, instead of those before.
    void setLevels(const std::vector<double>& levels);

    /// Draws these bands instead of those before, each from 0 to its height.
    void setBands(const std::vector<PlotBand>& bands);

    void setTitles(const QString& x, const QString& y);

    /// Has the axes reach over all that is drawn, or horizontally from one value to another.
    void fit();
    void fit(double from, double to);

protected:
    void changeEvent(QEvent* event) override;

private:
    QLineSeries* addLine();
    void dress();
    void fitHeight(double from, double to);

    QAbstractAxis* m_x;
    QValueAxis* m_y;
    std::vector<QLineSeries*> m_curves;
    std::vector<QLineSeries*> m_levels;
    std::vector<QAreaSeries*> m_bands;
};

} // namespace tov::workbench

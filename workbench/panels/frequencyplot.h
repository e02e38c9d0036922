#pragma once

#include "workbench/models/tuning.h"
#include "workbench/panels/plotview.h"

#include <vector>

namespace tov::workbench {

/// Curves of power codes over the frequency, and beside them the bands in which filters are used.
class FrequencyPlot final : public QWidget
{
    Q_OBJECT

public:
    explicit FrequencyPlot(QWidget* parent = nullptr);

    /// Shows these instead of what was there. A band without an end goes on to the end of the plot.
    void show(const std::vector<PowerCurve>& curves, const std::vector<Band>& bands);

private:
    void showCurves(const std::vector<PowerCurve>& curves);
    void showBands(const std::vector<Band>& bands);

    PlotView* m_curves;
    PlotView* m_bands;
    double m_least = 0; // GHz, of both
    double m_most = 0;
};

} // namespace tov::workbench

#pragma once

#include <QChartView>

namespace tov::workbench {

/// A plot in the colours of the palette, which it takes anew when that changes; it moves nothing by itself.
class PlotView : public QChartView
{
    Q_OBJECT

public:
    explicit PlotView(QWidget* parent = nullptr);

    /// Gives what was added to the chart the colours of the palette. Call it when series or axes were added.
    void paintInPalette();

    /// The colour of the series of this number, from 0, in the palette.
    QColor colorOf(int series) const;

protected:
    void changeEvent(QEvent* event) override;
};

} // namespace tov::workbench

#include "workbench/panels/plotview.h"

#include <QAbstractAxis>
#include <QChart>
#include <QEvent>
#include <QGraphicsLayout>
#include <QLegend>
#include <QXYSeries>

namespace tov::workbench {

PlotView::PlotView(QWidget* parent)
    : QChartView(parent)
{
    setRenderHint(QPainter::Antialiasing);
    setFrameShape(NoFrame);
    chart()->setAnimationOptions(QChart::NoAnimation);
    chart()->setMargins({4, 4, 4, 4});
    chart()->layout()->setContentsMargins(0, 0, 0, 0);
    chart()->setBackgroundRoundness(0);
    paintInPalette();
}

QColor PlotView::colorOf(int series) const
{
    const QColor first = palette().color(QPalette::Active, QPalette::Highlight);
    constexpr int apart = 137; // the golden angle: hues that follow are far from each other
    const bool isDark = palette().color(QPalette::Base).lightness() < palette().color(QPalette::Text).lightness();
    return QColor::fromHsl((first.hslHue() + series * apart) % 360, 170, isDark ? 155 : 105);
}

void PlotView::paintInPalette()
{
    const QColor text = palette().color(QPalette::Text);
    const QColor ground = palette().color(QPalette::Base);
    QColor grid = text;
    grid.setAlphaF(0.18F);
    QColor faint = text;
    faint.setAlphaF(0.07F);
    chart()->setBackgroundBrush(ground);
    setBackgroundBrush(ground);
    chart()->setTitleBrush(text);
    chart()->legend()->setLabelColor(text);
    for (QAbstractAxis* const axis : chart()->axes()) {
        axis->setLabelsColor(text);
        axis->setTitleBrush(text);
        axis->setLinePenColor(text);
        axis->setGridLineColor(grid);
        axis->setMinorGridLineColor(faint);
        axis->setTitleFont(font());
        axis->setLabelsFont(font());
    }
    int number = 0;
    for (QAbstractSeries* const each : chart()->series())
        if (auto* const series = qobject_cast<QXYSeries*>(each)) {
            QPen pen = series->pen();
            pen.setColor(colorOf(number++));
            series->setPen(pen);
        }
}

void PlotView::changeEvent(QEvent* event)
{
    QChartView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::EnabledChange
        || event->type() == QEvent::FontChange)
        paintInPalette();
}

} // namespace tov::workbench

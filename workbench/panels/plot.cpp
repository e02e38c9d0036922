#include "workbench/panels/plot.h"

#include <QAreaSeries>
#include <QChart>
#include <QDateTime>
#include <QDateTimeAxis>
#include <QEvent>
#include <QLegend>
#include <QLineSeries>
#include <QValueAxis>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tov::workbench {

namespace {

constexpr double curveWidth = 1.6;

// From the least to the most of what it was shown.
struct Reach
{
    double least = std::numeric_limits<double>::infinity();
    double most = -std::numeric_limits<double>::infinity();

    void take(double value)
    {
        least = std::min(least, value);
        most = std::max(most, value);
    }
    bool isEmpty() const { return least > most; }

    // What stands alone gets room at both sides.
    void widen()
    {
        if (least < most)
            return;
        const double room = most == 0.0 ? 1.0 : std::abs(most) * 0.1;
        least -= room;
        most += room;
    }
};

} // namespace

Plot::Plot(const QString& name, QWidget* parent, QAbstractAxis* x)
    : PlotView(parent)
    , m_x(x != nullptr ? x : new QValueAxis(this))
    , m_y(new QValueAxis(this))
{
    setAccessibleName(name);
    setMinimumHeight(fontMetrics().height() * 9);
    chart()->addAxis(m_x, Qt::AlignBottom);
    chart()->addAxis(m_y, Qt::AlignLeft);
    chart()->legend()->setAlignment(Qt::AlignRight);
    dress();
}

void Plot::show(const CurveSheet& sheet)
{
    setTitles(sheet.xTitle, sheet.yTitle);
    setCurves(sheet.curves);
    fit();
}

void Plot::setCurves(const std::vector<Curve>& curves)
{
    while (m_curves.size() > curves.size()) {
        chart()->removeSeries(m_curves.back());
        m_curves.back()->deleteLater();
        m_curves.pop_back();
    }
    const bool grows = m_curves.size() < curves.size();
    while (m_curves.size() < curves.size())
        m_curves.push_back(addLine());
    for (std::size_t i = 0; i < curves.size(); ++i) {
        m_curves[i]->setName(curves[i].name);
        m_curves[i]->setPointsVisible(curves[i].points.size() == 1); // of which no line can be drawn
        m_curves[i]->replace(curves[i].points);
        m_curves[i]->setVisible(!curves[i].points.isEmpty()); // nor named in the legend
    }
    if (grows)
        dress();
    chart()->legend()->setVisible(curves.size() > 1);
}

void Plot::setLevels(const std::vector<double>& levels)
{
    while (m_levels.size() > levels.size()) {
        chart()->removeSeries(m_levels.back());
        m_levels.back()->deleteLater();
        m_levels.pop_back();
    }
    while (m_levels.size() < levels.size())
        m_levels.push_back(addLine());
    for (std::size_t i = 0; i < levels.size(); ++i) {
        m_levels[i]->setName(tr("limit %1").arg(levels[i]));
        m_levels[i]->replace({{0.0, levels[i]}}); // as wide as the axis, which fit() knows
    }
    dress();
}

void Plot::setBands(const std::vector<PlotBand>& bands)
{
    for (QAreaSeries* const band : m_bands) {
        chart()->removeSeries(band);
        band->deleteLater();
    }
    m_bands.clear();
    for (const PlotBand& band : bands) {
        auto* const top = new QLineSeries(this);
        top->append(band.from, band.height);
        top->append(band.to, band.height);
        auto* const area = m_bands.emplace_back(new QAreaSeries(top));
        top->setParent(area);
        chart()->addSeries(area);
        area->attachAxis(m_x);
        area->attachAxis(m_y);
    }
    chart()->legend()->hide();
    dress();
}

void Plot::setTitles(const QString& x, const QString& y)
{
    m_x->setTitleText(x);
    m_y->setTitleText(y);
}

void Plot::fit()
{
    Reach reach;
    for (const QLineSeries* const curve : m_curves)
        for (const QPointF& point : curve->points())
            reach.take(point.x());
    for (const QAreaSeries* const band : m_bands)
        for (const QPointF& point : band->upperSeries()->points())
            reach.take(point.x());
    if (reach.isEmpty())
        return;
    reach.widen();
    fit(reach.least, reach.most);
}

void Plot::fit(double from, double to)
{
    if (auto* const times = qobject_cast<QDateTimeAxis*>(m_x))
        times->setRange(QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(from)),
                        QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(to)));
    else
        m_x->setRange(from, to);
    for (QLineSeries* const level : m_levels) {
        const double height = level->at(0).y();
        level->replace({{from, height}, {to, height}});
    }
    fitHeight(from, to);
}

void Plot::fitHeight(double from, double to)
{
    Reach reach;
    for (const QLineSeries* const curve : m_curves)
        for (const QPointF& point : curve->points())
            if (point.x() >= from && point.x() <= to)
                reach.take(point.y());
    for (const QLineSeries* const level : m_levels)
        reach.take(level->at(0).y());
    for (const QAreaSeries* const band : m_bands) {
        reach.take(0.0);
        reach.take(band->upperSeries()->at(0).y());
    }
    if (reach.isEmpty())
        return;
    reach.widen();
    m_y->setRange(reach.least, reach.most);
    m_y->applyNiceNumbers();
}

void Plot::changeEvent(QEvent* event)
{
    PlotView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::EnabledChange
        || event->type() == QEvent::FontChange)
        dress();
}

QLineSeries* Plot::addLine()
{
    auto* const line = new QLineSeries(this);
    chart()->addSeries(line);
    line->attachAxis(m_x);
    line->attachAxis(m_y);
    return line;
}

void Plot::dress()
{
    paintInPalette();
    chart()->legend()->setFont(font());
    static constexpr std::array styles = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine};
    for (std::size_t i = 0; i < m_curves.size(); ++i)
        m_curves[i]->setPen(QPen(colorOf(static_cast<int>(i)), curveWidth, styles.at(i % styles.size())));
    for (QLineSeries* const level : m_levels)
        level->setPen(QPen(palette().color(QPalette::Text), 1.0, Qt::DashLine));
    for (QAreaSeries* const band : m_bands) {
        QColor inside = palette().color(QPalette::Highlight);
        band->setPen(QPen(inside, curveWidth));
        inside.setAlphaF(0.35F);
        band->setBrush(inside);
    }
}

} // namespace tov::workbench

#include "workbench/panels/frequencyplot.h"

#include <QCategoryAxis>
#include <QChart>
#include <QHBoxLayout>
#include <QLegend>
#include <QLineSeries>
#include <QLogValueAxis>
#include <QValueAxis>

#include <algorithm>
#include <cmath>

namespace tov::workbench {

namespace {

constexpr double gigahertz = 1e9;

void empty(QChart& chart)
{
    chart.removeAllSeries();
    for (QAbstractAxis* const axis : chart.axes()) {
        chart.removeAxis(axis);
        delete axis; // nobody's once it is removed
    }
}

// Attached to all series of the chart, which own it from then on.
template <typename Axis>
Axis& addAxis(QChart& chart, Qt::Alignment side, const QString& title)
{
    auto* const axis = new Axis(&chart);
    axis->setTitleText(title);
    chart.addAxis(axis, side);
    for (QAbstractSeries* const series : chart.series())
        series->attachAxis(axis);
    return *axis;
}

void addFrequencies(QChart& chart, double least, double most)
{
    auto& axis = addAxis<QLogValueAxis>(chart, Qt::AlignBottom, FrequencyPlot::tr("Frequency (GHz)"));
    axis.setBase(10);
    axis.setLabelFormat(QStringLiteral("%g"));
    axis.setMinorTickCount(8);
    axis.setRange(least, most);
}

} // namespace

FrequencyPlot::FrequencyPlot(QWidget* parent)
    : QWidget(parent)
    , m_curves(new PlotView(this))
    , m_bands(new PlotView(this))
{
    m_curves->setAccessibleName(tr("Power codes over the frequency"));
    m_bands->setAccessibleName(tr("Bands of the filters over the frequency"));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_curves, 1);
    layout->addWidget(m_bands, 1);
    setMinimumHeight(fontMetrics().height() * 15);
    m_bands->chart()->legend()->hide();
    m_curves->chart()->legend()->setAlignment(Qt::AlignTop);
}

void FrequencyPlot::show(const std::vector<PowerCurve>& curves, const std::vector<Band>& bands)
{
    std::vector<double> frequencies; // above 0, where a logarithm is
    for (const PowerCurve& curve : curves)
        for (const PowerPoint& point : curve.points)
            frequencies.push_back(point.frequency / gigahertz);
    for (const Band& band : bands)
        frequencies.push_back(band.from / gigahertz);
    std::erase_if(frequencies, [](double frequency) { return !(frequency > 0) || !std::isfinite(frequency); });
    const auto [least, most] = std::ranges::minmax_element(frequencies);
    m_least = frequencies.empty() ? 0.01 : *least / 1.5;
    m_most = frequencies.empty() ? 100 : *most * 1.5;
    m_curves->setVisible(!curves.empty());
    m_bands->setVisible(!bands.empty());
    showCurves(curves);
    showBands(bands);
}

void FrequencyPlot::showCurves(const std::vector<PowerCurve>& curves)
{
    QChart& chart = *m_curves->chart();
    empty(chart);
    double highest = 1;
    for (const PowerCurve& curve : curves) {
        auto* const series = new QLineSeries(&chart);
        series->setName(curve.name);
        series->setPointsVisible(true);
        // The first is drawn widest, so that one that is equal to it does not hide it.
        const bool isFirst = chart.series().isEmpty();
        series->setPen(QPen(QBrush(), isFirst ? 5 : 2, isFirst ? Qt::SolidLine : Qt::DashLine));
        for (const PowerPoint& point : curve.points) {
            series->append(std::max(point.frequency / gigahertz, m_least), point.code);
            highest = std::max(highest, point.code);
        }
        chart.addSeries(series);
    }
    addFrequencies(chart, m_least, m_most);
    auto& codes = addAxis<QValueAxis>(chart, Qt::AlignLeft, tr("Power code"));
    codes.setLabelFormat(QStringLiteral("%g"));
    codes.setRange(0, highest * 1.1);
    codes.setTickCount(6);
    codes.applyNiceNumbers();
    m_curves->paintInPalette();
}

void FrequencyPlot::showBands(const std::vector<Band>& bands)
{
    constexpr int width = 12;
    QChart& chart = *m_bands->chart();
    empty(chart);
    double height = 0.5;
    for (const auto& [name, from, to] : bands) {
        auto* const series = new QLineSeries(&chart);
        series->setPen(QPen(QBrush(), width, Qt::SolidLine, Qt::FlatCap));
        series->append(std::max(from / gigahertz, m_least), height);
        series->append(to ? std::max(*to / gigahertz, m_least) : m_most, height);
        chart.addSeries(series);
        height += 1.0;
    }
    addFrequencies(chart, m_least, m_most);
    auto& names = addAxis<QCategoryAxis>(chart, Qt::AlignLeft, {});
    for (std::size_t i = 0; i < bands.size(); ++i)
        names.append(bands[i].name, static_cast<double>(i + 1));
    names.setLabelsPosition(QCategoryAxis::AxisLabelsPositionCenter);
    names.setRange(0, static_cast<double>(std::max<std::size_t>(bands.size(), 1)));
    m_bands->paintInPalette();
}

} // namespace tov::workbench

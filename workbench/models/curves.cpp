#include "workbench/models/curves.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <utility>

namespace tov::workbench {

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("tov::workbench::Curve", text);
}

Curve magnitude(const QString& name, const std::vector<double>& frequencies, const vna::ErrorTerms::Values& values)
{
    Curve curve{name, {}};
    const auto count = std::min(frequencies.size(), values.size());
    curve.points.reserve(static_cast<qsizetype>(count));
    for (std::size_t i = 0; i < count; ++i)
        if (const double amount = std::abs(values[i]); amount > 0.0)
            curve.points.append({inGigahertz(frequencies[i]), 20.0 * std::log10(amount)});
    return curve;
}

CurveSheet sheet(const QString& name, std::vector<Curve> curves)
{
    return {name, gigahertzTitle(), translated("Magnitude (dB)"), std::move(curves)};
}

} // namespace

CurveTable tableOf(const CurveSheet& sheet)
{
    constexpr double perUnit = 1000.0;
    std::map<double, QVariantList> rows;
    for (std::size_t i = 0; i < sheet.curves.size(); ++i)
        for (const QPointF& point : sheet.curves[i].points) {
            QVariantList& row = rows[point.x()];
            if (row.isEmpty()) {
                row.resize(1 + static_cast<qsizetype>(sheet.curves.size()));
                row.front() = point.x();
            }
            row[1 + static_cast<qsizetype>(i)] = std::round(point.y() * perUnit) / perUnit;
        }
    CurveTable table{.headings = {sheet.xTitle}, .rows = {}};
    for (const Curve& curve : sheet.curves)
        table.headings.append(curve.name);
    table.rows.reserve(rows.size());
    for (auto& [x, row] : rows)
        table.rows.push_back(std::move(row));
    return table;
}

QString gigahertzTitle()
{
    return translated("Frequency (GHz)");
}

std::vector<CurveSheet> magnitudesOf(const vna::ErrorTerms& terms)
{
    std::vector<CurveSheet> sheets{sheet(translated("All terms"), {})};
    const auto add = [&](const QString& whose, std::vector<Curve> curves) {
        for (Curve& curve : curves)
            curve.name = whose + QStringLiteral(", ") + curve.name;
        std::ranges::copy(curves, std::back_inserter(sheets.front().curves));
        sheets.push_back(sheet(whose, std::move(curves)));
    };
    for (const auto& port : terms.ports)
        add(translated("Port %1").arg(port.port),
            {magnitude(translated("directivity"), terms.frequencies, port.directivity),
             magnitude(translated("source match"), terms.frequencies, port.sourceMatch),
             magnitude(translated("reflection tracking"), terms.frequencies, port.reflectionTracking)});
    for (const auto& pair : terms.portPairs)
        add(translated("Path %1 to %2").arg(pair.sourcePort).arg(pair.receiverPort),
            {magnitude(translated("load match"), terms.frequencies, pair.loadMatch),
             magnitude(translated("transmission tracking"), terms.frequencies, pair.transmissionTracking),
             magnitude(translated("isolation"), terms.frequencies, pair.isolation)});
    if (sheets.size() == 2)
        sheets.pop_back(); // the same as all
    return sheets;
}

} // namespace tov::workbench

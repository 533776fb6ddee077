// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/ChartShapes.h"

#include "platform/chart/BarShape.h"
#include "platform/chart/PieShape.h"
#include "platform/chart/RunShape.h"

#include <algorithm>

namespace chart
{

std::vector<std::unique_ptr<Shape>> shapesOf(const Chart &chart, const PlotColours &plotColours)
{
    std::vector<int> columns[5];
    for (int column = 1; column <= chart.SeriesCount(); ++column) {
        columns[static_cast<std::size_t>(shapeKindOf(chart.series(column).SeriesType))].push_back(column);
    }
    const auto of = [&columns](ShapeKind kind) -> std::vector<int> & { return columns[static_cast<std::size_t>(kind)]; };
    const auto sum = [&chart](int column) { return chart.ChartData().columnSum(column).value_or(0.0); };
    std::stable_sort(of(ShapeKind::Area).begin(), of(ShapeKind::Area).end(),
                     [&](int one, int two) { return sum(one) > sum(two); });

    std::vector<std::unique_ptr<Shape>> shapes;
    const auto addRuns = [&](ShapeKind kind) {
        for (const int column : of(kind)) {
            shapes.push_back(std::make_unique<RunShape>(chart, plotColours, column, kind));
        }
    };
    addRuns(ShapeKind::Area);
    if (!of(ShapeKind::Bar).empty()) {
        shapes.push_back(std::make_unique<BarShape>(chart, plotColours, of(ShapeKind::Bar)));
    }
    addRuns(ShapeKind::Step);
    addRuns(ShapeKind::Line);
    if (!of(ShapeKind::Pie).empty()) {
        shapes.push_back(std::make_unique<PieShape>(chart, plotColours, of(ShapeKind::Pie)));
    }
    return shapes;
}

} // namespace chart

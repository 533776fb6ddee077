// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/Shape.h"

#include <algorithm>
#include <cmath>

namespace chart
{

namespace
{

double distanceTo(const QRectF &body, const QPointF &position)
{
    const double across = std::max({body.left() - position.x(), position.x() - body.right(), 0.0});
    const double along = std::max({body.top() - position.y(), position.y() - body.bottom(), 0.0});
    return std::hypot(across, along);
}

double distanceTo(const DrawnPoint &point, const QPointF &position)
{
    const double toAnchor = std::hypot(position.x() - point.anchor.x(), position.y() - point.anchor.y());
    if (point.body.isNull()) {
        return toAnchor;
    }
    return std::min(toAnchor, distanceTo(point.body, position) + (point.yields ? Shape::Reach : 0.0));
}

} // namespace

Shape::Shape(const Chart &chart, const PlotColours &plotColours, std::vector<int> series)
    : chart_(chart), series_(std::move(series))
{
    for (int column = 1; column <= chart.SeriesCount(); ++column) {
        styles_.push_back(styleOf(chart, column, plotColours));
    }
}

std::optional<Shape::Hit> Shape::hitAt(const QPointF &position) const
{
    std::optional<Hit> best;
    for (const DrawnPoint &point : points_) {
        const double distance = distanceTo(point, position);
        if (distance <= Reach && (!best || distance < best->distance)) {
            best = Hit{point.index, distance};
        }
    }
    return best;
}

QPainterPath Shape::ringOf(const DrawnPoint &point) const
{
    QPainterPath ring;
    const double radius = std::max(6.0, style(point.index.series).markerSize / 2.0 + 3.0);
    ring.addEllipse(point.anchor, radius, radius);
    return ring;
}

void Shape::paintMarkers(QPainter &painter, const QRectF &exposed) const
{
    for (const int column : series_) {
        const SeriesStyle &each = style(column);
        const double margin = each.markerSize + each.markerPenWidth;
        const QRectF seen = exposed.adjusted(-margin, -margin, margin, margin);
        std::vector<QPointF> positions;
        for (const DrawnPoint &point : points_) {
            if (point.index.series == column && seen.contains(point.anchor)) {
                positions.push_back(point.anchor);
            }
        }
        drawMarkers(painter, each, positions);
    }
}

ShapeKind shapeKindOf(SeriesType type)
{
    switch (type) {
    case SeriesType::Area3d:
    case SeriesType::Area2d:
        return ShapeKind::Area;
    case SeriesType::Step3d:
    case SeriesType::Step2d:
        return ShapeKind::Step;
    case SeriesType::Line3d:
    case SeriesType::Line2d:
    case SeriesType::XY2d:
        return ShapeKind::Line;
    case SeriesType::Pie2d:
        return ShapeKind::Pie;
    case SeriesType::Bar3d:
    case SeriesType::Bar2d:
        break;
    }
    return ShapeKind::Bar;
}

} // namespace chart

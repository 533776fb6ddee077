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

double distanceTo(const Mark &mark, const QPointF &position)
{
    const double toAnchor = std::hypot(position.x() - mark.anchor.x(), position.y() - mark.anchor.y());
    if (mark.body.isNull()) {
        return toAnchor;
    }
    return std::min(toAnchor, distanceTo(mark.body, position) + (mark.broad ? Shape::Reach : 0.0));
}

} // namespace

Shape::Shape(const Chart &chart, const PlotColours &plotColours, std::vector<int> series)
    : chart_(chart), series_(std::move(series))
{
    for (int column = 1; column <= chart.SeriesCount(); ++column) {
        looks_.push_back(lookOf(chart, column, plotColours));
    }
}

std::optional<Shape::Hit> Shape::hitAt(const QPointF &position) const
{
    std::optional<Hit> best;
    for (const Mark &mark : marks_) {
        const double distance = distanceTo(mark, position);
        if (distance <= Reach && (!best || distance < best->distance)) {
            best = Hit{mark.place, distance};
        }
    }
    return best;
}

QPainterPath Shape::ringOf(const Mark &mark) const
{
    QPainterPath ring;
    const double radius = std::max(6.0, look(mark.place.series).markerSize / 2.0 + 3.0);
    ring.addEllipse(mark.anchor, radius, radius);
    return ring;
}

void Shape::paintMarkers(QPainter &painter, const QRectF &exposed) const
{
    for (const int column : series_) {
        const SeriesStyle &each = look(column);
        const double margin = each.markerSize + each.markerPenWidth;
        const QRectF seen = exposed.adjusted(-margin, -margin, margin, margin);
        std::vector<QPointF> places;
        for (const Mark &mark : marks_) {
            if (mark.place.series == column && seen.contains(mark.anchor)) {
                places.push_back(mark.anchor);
            }
        }
        drawMarkers(painter, each, places);
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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/BarShape.h"

#include <algorithm>
#include <cmath>

namespace chart
{

namespace
{

/// Share of a row's width that its bars fill.
constexpr double Filled = 0.8;
constexpr double FilledOnPaper = 0.9;
constexpr double MinWidth = 2.0;
constexpr double MaxWidth = 56.0;
/// Narrower bars would look dotted with a hatch.
constexpr double MinHatchedWidth = 8.0;
constexpr double MinHatchedWidthOnPaper = 2.0;

/// Whole pixels on the screen, so that equal bars look equal.
double barWidth(double rowWidth, std::size_t bars, bool forPaper)
{
    const double width = std::min(rowWidth * (forPaper ? FilledOnPaper : Filled) / static_cast<double>(bars), MaxWidth);
    // Of one pixel the colours look alike.
    return forPaper ? std::max(width, 1.0) : std::max(std::floor(width), MinWidth);
}

QPolygonF slanted(const QPointF &from, const QPointF &to, const QPointF &depth)
{
    return QPolygonF({from, to, to + depth, from + depth});
}

} // namespace

void BarShape::arrange(const PlotFrame &frame, const DepthSlot &slot)
{
    ownPoints().clear();
    const auto bars = series().size();
    const bool forPaper = style(series().front()).forPaper;
    const double width = barWidth(frame.rowWidth(), bars, forPaper);
    const double pitch = std::min(width, frame.rowWidth() / static_cast<double>(bars));
    // Deeper than wide would look like a plank.
    const double depth = std::hypot(slot.thickness.x(), slot.thickness.y());
    thickness_ = depth > 0.0 ? slot.thickness * std::min(1.0, std::max(width, 4.0) / depth) : QPointF();
    for (int row = 1; row <= frame.rows; ++row) {
        const double left = frame.x(row) - pitch * static_cast<double>(bars) / 2.0;
        for (std::size_t bar = 0; bar < bars; ++bar) {
            const auto value = chart().ChartData().value(row, series()[bar]);
            if (!value) {
                continue;
            }
            // A counted zero is a line on the axis, unlike an empty cell.
            const double height = frame.y(0.0) - frame.y(*value);
            const double x = left + pitch * static_cast<double>(bar);
            const double shown = std::abs(height) < 1.0 ? 1.0 : height;
            const QRectF body =
                QRectF(forPaper ? x : std::round(x), frame.y(0.0) - shown, width, shown).normalized().translated(slot.offset);
            const double end = *value < 0.0 ? body.bottom() : body.top();
            ownPoints().push_back({{series()[bar], row}, *value, QPointF(body.center().x(), end), body});
        }
    }
}

void BarShape::paint(QPainter &painter, const QRectF &exposed) const
{
    if (thickness_.isNull()) {
        paintFlat(painter, exposed);
    } else {
        paintSolid(painter, exposed);
    }
    paintMarkers(painter, exposed);
}

void BarShape::addHatchOf(const DrawnPoint &point, std::vector<QLineF> &lines) const
{
    const SeriesStyle &each = style(point.index.series);
    if (point.body.width() >= (each.forPaper ? MinHatchedWidthOnPaper : MinHatchedWidth)) {
        addHatch(lines, each, point.body);
    }
}

void BarShape::paintFlat(QPainter &painter, const QRectF &exposed) const
{
    for (const int column : series()) {
        std::vector<QRectF> areas;
        std::vector<QLineF> hatch;
        for (const DrawnPoint &point : points()) {
            if (point.index.series == column && point.body.intersects(exposed)) {
                areas.push_back(point.body);
                addHatchOf(point, hatch);
            }
        }
        painter.setPen(Qt::NoPen);
        painter.setBrush(style(column).fill);
        painter.drawRects(areas.data(), static_cast<int>(areas.size()));
        drawHatch(painter, style(column), hatch);
    }
}

void BarShape::paintSolid(QPainter &painter, const QRectF &exposed) const
{
    const QRectF seen = exposed.adjusted(-thickness_.x(), 0.0, 0.0, -thickness_.y());
    // Row by row from the left: each bar covers the right side of its left neighbour.
    for (const DrawnPoint &point : points()) {
        if (!point.body.intersects(seen)) {
            continue;
        }
        const SeriesStyle &each = style(point.index.series);
        painter.setPen(Qt::NoPen);
        painter.setBrush(mixed(each.fill, Qt::white, 0.35));
        painter.drawConvexPolygon(slanted(point.body.topLeft(), point.body.topRight(), thickness_));
        painter.setBrush(mixed(each.fill, Qt::black, 0.3));
        painter.drawConvexPolygon(slanted(point.body.topRight(), point.body.bottomRight(), thickness_));
        painter.setBrush(each.fill);
        painter.drawRect(point.body);
        std::vector<QLineF> hatch;
        addHatchOf(point, hatch);
        drawHatch(painter, each, hatch);
    }
}

} // namespace chart

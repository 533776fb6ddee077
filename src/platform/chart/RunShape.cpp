// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/RunShape.h"

#include <algorithm>
#include <cmath>

namespace chart
{

namespace
{

constexpr double FlatAreaOpacity = 0.28;
constexpr double SolidAreaOpacity = 0.82;

QColor translucent(QColor colour, double opacity)
{
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

} // namespace

RunShape::RunShape(const Chart &chart, const PlotColours &plotColours, int column, ShapeKind kind)
    : Shape(chart, plotColours, {column}), column_(column), kind_(kind)
{
}

void RunShape::arrange(const PlotFrame &frame, const DepthSlot &slot)
{
    ownPoints().clear();
    runs_.clear();
    isolated_.clear();
    open_.clear();
    rowWidth_ = frame.rowWidth();
    ground_ = frame.y(0.0) + slot.offset.y();
    thickness_ = slot.thickness;
    for (int row = 1; row <= frame.rows; ++row) {
        if (const auto value = chart().ChartData().value(row, column_)) {
            addPoint(frame, slot, row, *value);
        } else {
            closeRun();
        }
    }
    closeRun();
}

void RunShape::addPoint(const PlotFrame &frame, const DepthSlot &slot, int row, double value)
{
    const QPointF anchor = QPointF(frame.x(row), frame.y(value)) + slot.offset;
    const QPointF half(rowWidth_ / 2.0, 0.0);
    QRectF body;
    if (kind_ == ShapeKind::Step) {
        open_ << anchor - half << anchor + half;
        body = QRectF(anchor - half, QSizeF(rowWidth_, 0.0));
    } else {
        open_ << anchor;
    }
    if (kind_ == ShapeKind::Area) {
        body = QRectF(anchor - half, QPointF(anchor.x() + half.x(), ground_)).normalized();
    }
    ownPoints().push_back({{column_, row}, value, anchor, body, kind_ == ShapeKind::Area});
}

void RunShape::closeRun()
{
    if (open_.size() == 1) {
        isolated_.push_back(open_.front());
    } else if (!open_.isEmpty()) {
        runs_.push_back(open_);
    }
    open_.clear();
}

void RunShape::paint(QPainter &painter, const QRectF &exposed) const
{
    const bool solid = !thickness_.isNull();
    if (solid) {
        for (const QPolygonF &run : runs_) {
            paintRibbon(painter, run, exposed);
        }
    }
    if (kind_ == ShapeKind::Area) {
        paintAreas(painter);
    }
    SeriesStyle edge = style(column_);
    if (solid) {
        // The line has to stand out from the ribbon behind it.
        edge.pen = mixed(edge.pen, Qt::black, 0.5);
    }
    for (const QPolygonF &run : runs_) {
        drawRun(painter, edge, run, exposed);
    }
    paintIsolated(painter);
    paintMarkers(painter, exposed);
}

QPolygonF RunShape::areaBelow(const QPolygonF &run) const
{
    QPolygonF area = run;
    area << QPointF(run.back().x(), ground_) << QPointF(run.front().x(), ground_);
    return area;
}

void RunShape::paintAreas(QPainter &painter) const
{
    const bool solid = !thickness_.isNull();
    painter.setPen(Qt::NoPen);
    for (const QPolygonF &run : runs_) {
        if (solid) {
            const QPointF foot(run.back().x(), ground_);
            painter.setBrush(mixed(style(column_).fill, Qt::black, 0.3));
            painter.drawPolygon(QPolygonF({run.back(), foot, foot + thickness_, run.back() + thickness_}));
        }
        painter.setBrush(translucent(style(column_).fill, solid ? SolidAreaOpacity : FlatAreaOpacity));
        painter.drawPolygon(areaBelow(run));
    }
}

void RunShape::paintRibbon(QPainter &painter, const QPolygonF &run, const QRectF &exposed) const
{
    const SeriesStyle &each = style(column_);
    if (each.penStyle == PenStyle::NoLine && kind_ != ShapeKind::Area) {
        return;
    }
    for (qsizetype corner = 1; corner < run.size(); ++corner) {
        const QPointF from = run[corner - 1];
        const QPointF to = run[corner];
        if (std::max(from.x(), to.x()) + thickness_.x() < exposed.left() || std::min(from.x(), to.x()) > exposed.right()) {
            continue;
        }
        // Light falls from above left: surfaces that descend to the right are darker.
        const bool level = std::abs(to.y() - from.y()) < 0.5;
        const QColor area = level ? mixed(each.fill, Qt::white, 0.35)
            : to.y() < from.y()   ? mixed(each.fill, Qt::white, 0.2)
                                  : mixed(each.fill, Qt::black, 0.25);
        // The thin edge closes the gap to the next surface.
        painter.setPen(QPen(area, 0.7));
        painter.setBrush(area);
        painter.drawConvexPolygon(QPolygonF({from, to, to + thickness_, from + thickness_}));
    }
}

/// A point between two gaps has no line, so it is drawn as a dot.
void RunShape::paintIsolated(QPainter &painter) const
{
    const SeriesStyle &each = style(column_);
    if (each.penStyle == PenStyle::NoLine) {
        return;
    }
    const double radius = std::max(2.2, each.penWidth);
    for (const QPointF &point : isolated_) {
        if (kind_ == ShapeKind::Area) {
            painter.setPen(QPen(each.pen, each.penWidth));
            painter.drawLine(point, QPointF(point.x(), ground_));
        }
        painter.setPen(Qt::NoPen);
        painter.setBrush(each.pen);
        painter.drawEllipse(point, radius, radius);
    }
}

} // namespace chart

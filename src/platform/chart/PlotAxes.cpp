// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/PlotAxes.h"

#include "platform/chart/SeriesStyle.h"

#include <QFontMetricsF>

#include <algorithm>

namespace chart
{

namespace
{

constexpr double ValueGap = 8.0;
constexpr double RowGap = 4.0;
constexpr double TitleGap = 8.0;
constexpr double SideEdge = 8.0;
constexpr double LowerEdge = 2.0;
/// Wider than any title; text is centred in it.
constexpr double TitleWidth = 2000.0;

/// A line of one pixel without antialiasing, so that it is equally dark at every position.
void drawSharp(QPainter &painter, const std::vector<QLineF> &lines, const QColor &colour)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(colour, 1.0));
    painter.drawLines(lines.data(), static_cast<int>(lines.size()));
    painter.setRenderHint(QPainter::Antialiasing);
}

double widest(const QFont &font, const std::vector<AxisTick> &ticks)
{
    const QFontMetricsF metrics(font);
    double width = 0.0;
    for (const AxisTick &tick : ticks) {
        width = std::max(width, metrics.horizontalAdvance(tick.text));
    }
    return width;
}

} // namespace

PlotAxes::PlotAxes(const Chart &chart, const PlotColours &plotColours, const QFont &titleFont)
    : chart_(chart), plotColours_(plotColours), titleFont_(titleFont)
{
}

void PlotAxes::setTicks(std::vector<AxisTick> values, std::vector<AxisTick> rows, const QFont &valueFont, const QFont &rowFont)
{
    valueTicks_ = std::move(values);
    rowTicks_ = std::move(rows);
    valueFont_ = valueFont;
    rowFont_ = rowFont;
    widestValue_ = widest(valueFont_, valueTicks_);
}

QString PlotAxes::titleOf(AxisId axis) const
{
    return chart_.AxisTitleVisible(axis) ? chart_.AxisTitle(axis) : QString();
}

QMarginsF PlotAxes::margins(const QPointF &depth) const
{
    const QFontMetricsF titles(titleFont_);
    const auto withTitle = [&](AxisId axis) { return titleOf(axis).isEmpty() ? 0.0 : TitleGap + titles.height(); };
    const double values = ValueGap + widestValue_ + SideEdge;
    double right = depth.x() + values + withTitle(AxisId::Y2);
    if (!depth.isNull()) {
        right = std::max(right, depth.x() / 2.0 + ValueGap + titles.horizontalAdvance(titleOf(AxisId::Z)) + SideEdge);
    }
    return {values + withTitle(AxisId::Y), 0.0, right,
            RowGap + QFontMetricsF(rowFont_).height() + withTitle(AxisId::X) + LowerEdge};
}

void PlotAxes::paintGrid(QPainter &painter) const
{
    const QRectF &front = frame_.front;
    const QPointF &depth = frame_.depth;
    std::vector<QLineF> grid;
    for (const AxisTick &tick : valueTicks_) {
        const QPointF corner(front.left(), frame_.y(tick.position));
        grid.emplace_back(corner + depth, QPointF(front.right(), corner.y()) + depth);
        if (!depth.isNull()) {
            grid.emplace_back(corner, corner + depth);
        }
    }
    for (const int row : chart_.unitRows()) {
        const QPointF foot = QPointF(frame_.x(row), front.bottom()) + depth;
        grid.emplace_back(foot, QPointF(foot.x(), front.top() + depth.y()));
    }
    if (depth.isNull()) {
        drawSharp(painter, grid, plotColours_.line);
        return;
    }
    grid.emplace_back(front.bottomLeft() + depth, front.topLeft() + depth);
    grid.emplace_back(front.bottomRight(), front.bottomRight() + depth);
    painter.setPen(Qt::NoPen);
    painter.setBrush(mixed(plotColours_.background, plotColours_.line, 0.35));
    painter.drawPolygon(QPolygonF({front.topLeft(), front.bottomLeft(), front.bottomLeft() + depth, front.topLeft() + depth}));
    painter.drawPolygon(
        QPolygonF({front.bottomLeft(), front.bottomRight(), front.bottomRight() + depth, front.bottomLeft() + depth}));
    painter.setPen(QPen(plotColours_.line, 1.0));
    painter.drawLines(grid.data(), static_cast<int>(grid.size()));
}

void PlotAxes::paint(QPainter &painter, const AxesView &view) const
{
    const QRectF &front = frame_.front;
    paintRowAxis(painter, view);
    paintValueAxis(painter, QLineF(front.topLeft(), front.bottomLeft()).translated(view.start.x(), 0.0), Qt::AlignLeft,
                   titleOf(AxisId::Y), view.inner);
    paintValueAxis(painter, QLineF(front.topRight(), front.bottomRight()).translated(frame_.depth).translated(view.end.x(), 0.0),
                   Qt::AlignRight, titleOf(AxisId::Y2), view.inner);
    paintDepthTitle(painter);
}

void PlotAxes::paintRowAxis(QPainter &painter, const AxesView &view) const
{
    const QRectF &inner = view.inner;
    const double bottom = frame_.front.bottom() + view.end.y();
    drawSharp(painter, {QLineF(inner.left(), bottom, inner.right(), bottom)}, plotColours_.border);
    const QFontMetricsF metrics(rowFont_);
    painter.setFont(rowFont_);
    painter.setPen(plotColours_.muted);
    for (const AxisTick &tick : rowTicks_) {
        const double half = metrics.horizontalAdvance(tick.text) / 2.0 + 2.0;
        const double x = frame_.x(tick.position);
        if (x >= inner.left() && x <= inner.right()) {
            painter.drawText(QRectF(x - half, bottom + RowGap, 2.0 * half, metrics.height()), Qt::AlignCenter, tick.text);
        }
    }
    const double height = QFontMetricsF(titleFont_).height();
    painter.setFont(titleFont_);
    painter.setPen(plotColours_.text);
    painter.drawText(
        QRectF(inner.center().x() - TitleWidth / 2.0, bottom + RowGap + metrics.height() + TitleGap, TitleWidth, height),
        Qt::AlignCenter, titleOf(AxisId::X));
}

void PlotAxes::paintValueAxis(QPainter &painter, const QLineF &edge, Qt::AlignmentFlag side, const QString &title,
                              const QRectF &inner) const
{
    // On a solid chart the right axis is as far above the front as the back plane.
    const double lift = edge.y1() - frame_.front.top();
    const double top = std::max(edge.y1(), inner.top() + lift);
    const double bottom = std::min(edge.y2(), inner.bottom() + lift);
    drawSharp(painter, {QLineF(edge.x1(), top, edge.x1(), bottom)}, plotColours_.border);
    const double outward = side == Qt::AlignLeft ? -1.0 : 1.0;
    const double height = QFontMetricsF(valueFont_).height();
    const double width = widestValue_ + 2.0;
    const double left = side == Qt::AlignLeft ? edge.x1() - ValueGap - width : edge.x1() + ValueGap;
    painter.setFont(valueFont_);
    painter.setPen(plotColours_.muted);
    for (const AxisTick &tick : valueTicks_) {
        const double y = frame_.y(tick.position) + lift;
        // The numbers of each side begin at their axis.
        if (y >= top - 1.0 && y <= bottom + 1.0) {
            painter.drawText(QRectF(left, y - height / 2.0 - 1.0, width, height),
                             Qt::AlignVCenter | (side == Qt::AlignLeft ? Qt::AlignRight : Qt::AlignLeft), tick.text);
        }
    }
    if (title.isEmpty()) {
        return;
    }
    const double titleHeight = QFontMetricsF(titleFont_).height();
    painter.save();
    painter.setFont(titleFont_);
    painter.setPen(plotColours_.text);
    painter.translate(edge.x1() + outward * (ValueGap + widestValue_ + TitleGap + titleHeight / 2.0), (top + bottom) / 2.0);
    painter.rotate(-90.0);
    painter.drawText(QRectF(-TitleWidth / 2.0, -titleHeight / 2.0, TitleWidth, titleHeight), Qt::AlignCenter, title);
    painter.restore();
}

void PlotAxes::paintDepthTitle(QPainter &painter) const
{
    const QString title = titleOf(AxisId::Z);
    if (title.isEmpty() || frame_.depth.isNull()) {
        return;
    }
    const QPointF middle = frame_.front.bottomRight() + frame_.depth / 2.0;
    painter.setFont(titleFont_);
    painter.setPen(plotColours_.text);
    painter.drawText(QRectF(middle + QPointF(ValueGap, 0.0), QSizeF(TitleWidth, QFontMetricsF(titleFont_).height())),
                     Qt::AlignLeft | Qt::AlignVCenter, title);
}

} // namespace chart

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/Surroundings.h"

#include "platform/chart/SeriesStyle.h"

#include <QFontMetricsF>

#include <algorithm>

namespace chart
{

namespace
{

constexpr double TickGap = 8.0;
constexpr double TitleGap = 10.0;
constexpr double Edge = 12.0;

double widest(const QFont &font, const std::vector<AxisText> &ticks)
{
    const QFontMetricsF metrics(font);
    double width = 0.0;
    for (const AxisText &tick : ticks) {
        width = std::max(width, metrics.horizontalAdvance(tick.text));
    }
    return width;
}

QString visibleTitle(const Chart &chart, AxisId axis)
{
    return chart.AxisTitleVisible(axis) ? chart.AxisTitle(axis) : QString();
}

} // namespace

Surroundings::Surroundings(const Chart &chart, const PlotColours &plotColours, const QFont &titleFont)
    : chart_(chart), plotColours_(plotColours), titleFont_(titleFont)
{
}

void Surroundings::arrange(const PlotFrame &frame, std::vector<AxisText> ticks)
{
    frame_ = frame;
    ticks_ = std::move(ticks);
}

QString Surroundings::titleOf(AxisId axis) const
{
    return visibleTitle(chart_, axis);
}

double Surroundings::rightMargin(const Chart &chart, const QPointF &depth, const QFont &tickFont, const QFont &titleFont,
                                 const std::vector<AxisText> &ticks)
{
    const QFontMetricsF titles(titleFont);
    double margin = depth.x() + TickGap + widest(tickFont, ticks) + Edge;
    if (!visibleTitle(chart, AxisId::Y2).isEmpty()) {
        margin += TitleGap + titles.height();
    }
    if (!depth.isNull()) {
        margin = std::max(margin, depth.x() / 2.0 + TickGap + titles.horizontalAdvance(visibleTitle(chart, AxisId::Z)) + Edge);
    }
    return margin;
}

void Surroundings::paintRoom(QPainter &painter) const
{
    if (frame_.depth.isNull()) {
        return;
    }
    const QRectF &front = frame_.front;
    const QPointF &depth = frame_.depth;
    painter.setPen(Qt::NoPen);
    painter.setBrush(mixed(plotColours_.background, plotColours_.line, 0.35));
    painter.drawPolygon(QPolygonF({front.topLeft(), front.bottomLeft(), front.bottomLeft() + depth, front.topLeft() + depth}));
    painter.drawPolygon(
        QPolygonF({front.bottomLeft(), front.bottomRight(), front.bottomRight() + depth, front.bottomLeft() + depth}));
    std::vector<QLineF> grid;
    for (const AxisText &tick : ticks_) {
        const QPointF corner(front.left(), frame_.y(tick.place));
        grid.emplace_back(corner, corner + depth);
        grid.emplace_back(corner + depth, QPointF(front.right(), corner.y()) + depth);
    }
    grid.emplace_back(front.bottomLeft() + depth, front.topLeft() + depth);
    grid.emplace_back(front.bottomRight(), front.bottomRight() + depth);
    painter.setPen(QPen(plotColours_.line, 1.0));
    painter.drawLines(grid.data(), static_cast<int>(grid.size()));
}

void Surroundings::paintSecondAxis(QPainter &painter) const
{
    const QPointF top = frame_.front.topRight() + frame_.depth;
    const QPointF bottom = frame_.front.bottomRight() + frame_.depth;
    painter.setPen(QPen(plotColours_.border, 1.0));
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.drawLine(QLineF(top, bottom));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(frame_.font);
    painter.setPen(plotColours_.muted);
    const double height = QFontMetricsF(frame_.font).height();
    for (const AxisText &tick : ticks_) {
        const double y = frame_.y(tick.place) + frame_.depth.y();
        painter.drawText(QRectF(top.x() + TickGap, y - height / 2.0 - 1.0, 200.0, height), Qt::AlignLeft | Qt::AlignVCenter,
                         tick.text);
    }
    painter.setFont(titleFont_);
    painter.setPen(plotColours_.text);
    const double titleHeight = QFontMetricsF(titleFont_).height();
    if (const QString title = titleOf(AxisId::Y2); !title.isEmpty()) {
        painter.save();
        painter.translate(top.x() + TickGap + widest(frame_.font, ticks_) + TitleGap + titleHeight / 2.0,
                          (top.y() + bottom.y()) / 2.0);
        painter.rotate(-90.0);
        painter.drawText(QRectF(-500.0, -titleHeight / 2.0, 1000.0, titleHeight), Qt::AlignCenter, title);
        painter.restore();
    }
    if (const QString title = titleOf(AxisId::Z); !title.isEmpty() && !frame_.depth.isNull()) {
        const QPointF middle = frame_.front.bottomRight() + frame_.depth / 2.0;
        painter.drawText(QRectF(middle + QPointF(TickGap, 0.0), QSizeF(500.0, titleHeight)), Qt::AlignLeft | Qt::AlignVCenter,
                         title);
    }
}

} // namespace chart

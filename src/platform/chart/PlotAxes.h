// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/PlotFrame.h"

#include <QPainter>

#include <vector>

namespace chart
{

struct AxisTick {
    double position = 0.0;
    QString text;
};

/// Where the axes of a plot are painted: around the visible part of its front, moved there from their own edges.
struct AxesView {
    QRectF inner;
    /// For the axis on the left, and for those on the right and below.
    QPointF start;
    QPointF end;
};

/// The axes of a plot with their ticks, titles and grid: rows below, values on both sides, and on a solid chart the walls and the
/// depth axis. Lengths in logical pixels.
class PlotAxes
{
public:
    PlotAxes(const Chart &chart, const PlotColours &plotColours, const QFont &titleFont);

    /// Ticks of the values, at values; of the rows, at row numbers counted from 1.
    void setTicks(std::vector<AxisTick> values, std::vector<AxisTick> rows, const QFont &valueFont, const QFont &rowFont);
    const std::vector<AxisTick> &valueTicks() const { return valueTicks_; }
    const std::vector<AxisTick> &rowTicks() const { return rowTicks_; }

    /// Space around the front for what setTicks() was given and the titles.
    QMarginsF margins(const QPointF &depth) const;
    void arrange(const PlotFrame &frame) { frame_ = frame; }

    /// Grid and walls, behind the shapes.
    void paintGrid(QPainter &painter) const;
    /// Lines, texts and titles, in front of the shapes.
    void paint(QPainter &painter, const AxesView &view) const;

private:
    QString titleOf(AxisId axis) const;
    void paintRowAxis(QPainter &painter, const AxesView &view) const;
    /// `edge` is the axis from its top down; the texts are outside of it.
    void paintValueAxis(QPainter &painter, const QLineF &edge, Qt::AlignmentFlag side, const QString &title,
                        const QRectF &inner) const;
    void paintDepthTitle(QPainter &painter) const;

    const Chart &chart_;
    const PlotColours &plotColours_;
    QFont titleFont_;
    QFont valueFont_;
    QFont rowFont_;
    PlotFrame frame_;
    std::vector<AxisTick> valueTicks_;
    std::vector<AxisTick> rowTicks_;
    double widestValue_ = 0.0;
};

} // namespace chart

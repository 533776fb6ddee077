// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/Shape.h"

namespace chart
{

/// A series drawn from row to row: as a line, as the area below it, or in steps. An empty cell leaves a gap.
class RunShape : public Shape
{
public:
    RunShape(const Chart &chart, const PlotColours &plotColours, int column, ShapeKind kind);

    void arrange(const PlotFrame &frame, const DepthSlot &slot) override;
    void paint(QPainter &painter, const QRectF &exposed) const override;

private:
    void addPoint(const PlotFrame &frame, const DepthSlot &slot, int row, double value);
    void closeRun();
    QPolygonF areaBelow(const QPolygonF &run) const;
    void paintAreas(QPainter &painter) const;
    void paintRibbon(QPainter &painter, const QPolygonF &run, const QRectF &exposed) const;
    void paintIsolated(QPainter &painter) const;

    int column_;
    ShapeKind kind_;
    double rowWidth_ = 0.0;
    double ground_ = 0.0;
    QPointF thickness_;
    QPolygonF open_;
    /// Corners of the outline between two gaps.
    std::vector<QPolygonF> runs_;
    /// Points with a gap on both sides.
    std::vector<QPointF> isolated_;
};

} // namespace chart

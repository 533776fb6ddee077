// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/Chart.h"

#include <QPainter>
#include <QPolygonF>

#include <vector>

namespace chart
{

/// Thin lines in a filled area, so that areas differ on a grey print too.
enum class Hatch { None, Rising, Falling, Level, Crossed };

/// How a series is drawn: colours of the plot, lengths in logical pixels.
struct SeriesStyle {
    QColor pen;
    QColor fill;
    QColor markerPen;
    QColor markerFill;
    QColor paper;
    double penWidth = 0.0;
    PenStyle penStyle = PenStyle::Solid;
    MarkerStyle marker = MarkerStyle::None;
    double markerSize = 0.0;
    double markerPenWidth = 0.0;
    bool showLabels = false;
    Hatch hatch = Hatch::None;
    bool forPaper = false;
};

/// `marker` is None where markers are not shown.
SeriesStyle styleOf(const Chart &chart, int column, const PlotColours &plotColours);

/// Mixes two colours; `part` is the share of `other`, 0 to 1.
QColor mixed(const QColor &colour, const QColor &other, double part);

/// A line through all corners in the style's pen, drawn segment by segment: a stroked path of thousands of corners would be far
/// slower. Segments outside `exposed` are left out.
void drawRun(QPainter &painter, const SeriesStyle &style, const QPolygonF &run, const QRectF &exposed);
void drawMarkers(QPainter &painter, const SeriesStyle &style, const std::vector<QPointF> &positions);

/// The hatch of a rectangle, aligned with that of every other.
void addHatch(std::vector<QLineF> &lines, const SeriesStyle &style, const QRectF &area);
void drawHatch(QPainter &painter, const SeriesStyle &style, const std::vector<QLineF> &lines);
/// Fills an area of any form, with the style's hatch.
void fillArea(QPainter &painter, const SeriesStyle &style, const QPainterPath &area);

} // namespace chart

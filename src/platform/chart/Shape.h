// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/PlotFrame.h"
#include "platform/chart/SeriesStyle.h"

#include <QPainterPath>

#include <optional>
#include <vector>

namespace chart
{

/// A unit of drawing: all bars, all slices, or the line, area or steps of one series.
class Shape
{
public:
    /// Greatest distance at which a click selects a point, in logical pixels.
    static constexpr double Reach = 7.0;

    struct Hit {
        PointIndex index;
        double distance = 0.0;
    };

    Shape(const Chart &chart, const PlotColours &plotColours, std::vector<int> series);
    virtual ~Shape() = default;

    virtual void arrange(const PlotFrame &frame, const DepthSlot &slot) = 0;
    /// Paints at least the part of the shape within `exposed`.
    virtual void paint(QPainter &painter, const QRectF &exposed) const = 0;
    virtual std::optional<Hit> hitAt(const QPointF &position) const;
    /// Outline that marks a point as selected.
    virtual QPainterPath ringOf(const DrawnPoint &point) const;

    const std::vector<DrawnPoint> &points() const { return points_; }
    const std::vector<int> &series() const { return series_; }
    const SeriesStyle &style(int column) const { return styles_[static_cast<std::size_t>(column - 1)]; }

protected:
    const Chart &chart() const { return chart_; }
    std::vector<DrawnPoint> &ownPoints() { return points_; }
    void paintMarkers(QPainter &painter, const QRectF &exposed) const;

private:
    const Chart &chart_;
    std::vector<int> series_;
    std::vector<SeriesStyle> styles_;
    std::vector<DrawnPoint> points_;
};

enum class ShapeKind { Area, Bar, Step, Line, Pie };

/// The kind of shape for a series type, flat or solid.
ShapeKind shapeKindOf(SeriesType type);

} // namespace chart

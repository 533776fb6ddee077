// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/PlotFrame.h"
#include "platform/chart/SeriesStyle.h"

#include <QPainterPath>

#include <optional>
#include <vector>

namespace chart
{

/// What belongs together in a drawing: all bars, all slices, or the line, area or steps of one series.
class Shape
{
public:
    /// Near enough to a point to mean it, in logical pixels.
    static constexpr double Reach = 7.0;

    struct Hit {
        PointIndex index;
        double distance = 0.0;
    };

    Shape(const Chart &chart, const PlotColours &plotColours, std::vector<int> series);
    virtual ~Shape() = default;

    virtual void arrange(const PlotFrame &frame, const DepthSlot &slot) = 0;
    /// Paints at least what of the shape lies in the exposed part.
    virtual void paint(QPainter &painter, const QRectF &exposed) const = 0;
    virtual std::optional<Hit> hitAt(const QPointF &position) const;
    /// The form that shows a point to be the chosen one.
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

/// The kind that draws a type of series, flat or solid.
ShapeKind shapeKindOf(SeriesType type);

} // namespace chart

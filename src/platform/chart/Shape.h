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
        PointPlace place;
        double distance = 0.0;
    };

    Shape(const Chart &chart, const PlotColours &plotColours, std::vector<int> series);
    virtual ~Shape() = default;

    virtual void arrange(const PlotFrame &frame, const DepthSlot &slot) = 0;
    /// Paints at least what of the shape lies in the exposed part.
    virtual void paint(QPainter &painter, const QRectF &exposed) const = 0;
    virtual std::optional<Hit> hitAt(const QPointF &position) const;
    /// The form that shows a point to be the chosen one.
    virtual QPainterPath ringOf(const Mark &mark) const;

    const std::vector<Mark> &marks() const { return marks_; }
    const std::vector<int> &series() const { return series_; }
    const SeriesStyle &look(int column) const { return looks_[static_cast<std::size_t>(column - 1)]; }

protected:
    const Chart &chart() const { return chart_; }
    std::vector<Mark> &ownMarks() { return marks_; }
    void paintMarkers(QPainter &painter, const QRectF &exposed) const;

private:
    const Chart &chart_;
    std::vector<int> series_;
    std::vector<SeriesStyle> looks_;
    std::vector<Mark> marks_;
};

enum class ShapeKind { Area, Bar, Step, Line, Pie };

/// The kind that draws a type of series, flat or solid.
ShapeKind shapeKindOf(SeriesType type);

} // namespace chart

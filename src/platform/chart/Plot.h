// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/Legend.h"
#include "platform/chart/PlotAxes.h"

#include <QSize>

#include <memory>
#include <utility>

namespace chart
{

/// A chart laid out at one size in one set of colours. It reads the chart at construction and at each layout.
class Plot
{
public:
    /// `legendWidth` is the width available for the legend, 0 for that of the plot.
    Plot(const Chart &chart, const PlotColours &plotColours, const QFont &font, const QSize &size, int legendWidth = 0);
    Plot(const Plot &) = delete;
    Plot &operator=(const Plot &) = delete;

    void layOut(const QSize &size, int legendWidth = 0);
    QSize size() const { return size_; }
    /// Paints at least the exposed part, in logical pixels from the painter's origin. Where only `seen` is visible, legend and
    /// axes are at its edges.
    void paint(QPainter &painter, const QRectF &exposed, const QRectF &seen = {}) const;

    /// Where only `seen` is visible, nothing is found under legend and axes.
    std::optional<PointIndex> pointAt(const QPointF &position, const QRectF &seen = {}) const;
    const DrawnPoint *drawnPoint(const PointIndex &index) const;
    QPainterPath ringOf(const PointIndex &index) const;
    /// Points of a series in the order of their rows.
    std::vector<PointIndex> pointsOf(int series) const;

    QRectF legendRectangle() const { return legend_.rectangle(); }
    QStringList legendTexts() const { return legend_.texts(); }
    const PlotFrame &frame() const { return frame_; }
    const std::vector<AxisTick> &valueTicks() const { return axes_.valueTicks(); }
    /// Labels of the rows, as many as there is space for.
    const std::vector<AxisTick> &rowTicks() const { return axes_.rowTicks(); }

    struct ValueLabel {
        PointIndex index;
        QRectF rectangle;
        QString text;
    };
    /// The values above the points as far as none covers another or a marker; high ones go first.
    const std::vector<ValueLabel> &valueLabels() const { return valueLabels_; }

private:
    bool isEmpty() const { return chart_.RowCount() == 0 || chart_.ColumnCount() == 0; }
    bool hasAxes() const;
    bool hasPie() const;
    /// One layout pass, from the frame size of the previous pass.
    void layOutFrame(int pieWidth);
    /// Sets the range of the frame.
    std::vector<AxisTick> scaleValues(double height);
    void chooseTicks();
    void measureRowTexts();
    /// In the normal font, or in a smaller one where all fit in that.
    std::pair<std::vector<AxisTick>, QFont> rowLabels(double rowWidth) const;
    QString rowText(int row) const;
    QPointF depthAt(const QSize &size) const;
    /// Places the legend and returns the y position below it.
    int headHeight(double left);
    void arrangeShapes();
    void placeValueLabels();
    bool isPart(const QRectF &seen) const { return !seen.isEmpty() && seen != QRectF(QPointF(), size_); }
    AxesView axesView(const QRectF &seen) const;
    /// The bottom of the legend and of its background.
    double legendBottom() const;
    /// Where the shapes are visible.
    QRectF shapesIn(const QRectF &seen) const;
    void paintHead(QPainter &painter, const QPointF &legendOffset) const;
    std::vector<AxisTick> unitLabels() const;
    void paintValueLabels(QPainter &painter, const QRectF &exposed, const QRectF &seen) const;

    const Chart &chart_;
    PlotColours plotColours_;
    QFont textFont_;
    QFont tickFont_;
    QFont headFont_;
    QSize size_;
    int legendWidth_ = 0;
    PlotFrame frame_;
    Legend legend_;
    PlotAxes axes_;
    std::vector<std::unique_ptr<Shape>> shapes_;
    std::vector<double> rowWidths_;
    std::vector<ValueLabel> valueLabels_;
};

} // namespace chart

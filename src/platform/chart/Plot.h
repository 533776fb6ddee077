// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/Legend.h"
#include "platform/chart/Surroundings.h"

#include <QSize>

#include <memory>

class QPaintDevice;

namespace chart
{

class PlotCanvas;

/// A chart laid out at one size in one theme. It reads the chart when it is made and when it is laid out.
class Plot
{
public:
    enum class Target {
        Screen,
        /// Printers and files that keep lines as lines.
        Vectors,
    };

    Plot(const Chart &chart, const PlotColours &plotColours, const QFont &font, const QSize &size);
    ~Plot();
    Plot(const Plot &) = delete;
    Plot &operator=(const Plot &) = delete;

    void layOut(const QSize &size);
    QSize size() const { return size_; }
    /// Paints at least the exposed part; the device may be narrower.
    void paint(QPaintDevice &device, const QRectF &exposed, Target target) const;

    std::optional<PointPlace> pointAt(const QPointF &position) const;
    const Mark *markOf(const PointPlace &place) const;
    QPainterPath ringOf(const PointPlace &place) const;
    /// Points of a series in the order of their rows.
    std::vector<PointPlace> pointsOf(int series) const;

    QRectF legendRectangle() const { return legend_.rectangle(); }
    QStringList legendTexts() const { return legend_.texts(); }
    const PlotFrame &frame() const { return frame_; }
    const std::vector<AxisText> &valueTicks() const { return valueTicks_; }
    /// Labels of the rows that have room.
    const std::vector<AxisText> &rowTicks() const { return rowTicks_; }

    struct ValueLabel {
        PointPlace place;
        QRectF room;
        QString text;
    };
    /// The values beside the points as far as none covers another or a marker; high ones go first.
    const std::vector<ValueLabel> &valueLabels() const { return valueLabels_; }

private:
    bool isEmpty() const { return chart_.RowCount() == 0 || chart_.ColumnCount() == 0; }
    bool hasAxes() const;
    bool hasPie() const;
    /// Places the frame by the size that it has so far, and what the frame's own size decides.
    void layOutFrame(int pieWidth);
    void scaleValues(double height);
    void measureRowTexts();
    void chooseRowLabels(double rowWidth);
    QString rowText(int row) const;
    QPointF depthAt(const QSize &size) const;
    /// Places the legend; returns where what is below may begin.
    int headHeight(double left);
    void arrangeShapes();
    void placeValueLabels();
    void paintHead(QPainter &painter) const;
    void paintValueLabels(QPainter &painter, const QRectF &exposed) const;

    const Chart &chart_;
    PlotColours plotColours_;
    QFont textFont_;
    QFont tickFont_;
    QFont rowFont_;
    QFont headFont_;
    QSize size_;
    PlotFrame frame_;
    Legend legend_;
    Surroundings surroundings_;
    std::vector<std::unique_ptr<Shape>> shapes_;
    std::vector<AxisText> valueTicks_;
    std::vector<double> rowWidths_;
    std::vector<AxisText> rowTicks_;
    std::vector<ValueLabel> valueLabels_;
    std::unique_ptr<PlotCanvas> canvas_;
};

} // namespace chart

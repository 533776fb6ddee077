// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/Chart.h"

#include <QFont>
#include <QPointF>
#include <QRectF>

namespace chart
{

/// Position of the values in a chart of one size. All lengths are logical pixels.
struct PlotFrame {
    /// The rectangle of the values; of a solid chart its front plane.
    QRectF front;
    /// From the front plane to the back plane; null on a flat chart.
    QPointF depth;
    /// For the slices and their names.
    QRectF pie;
    int rows = 0;
    double low = 0.0;
    double high = 1.0;
    QFont font;

    double rowWidth() const { return front.width() / (rows > 0 ? rows : 1); }
    /// Middle of a row, counted from 1.
    double x(double row) const { return front.left() + (row - 0.5) * rowWidth(); }
    double y(double value) const { return front.bottom() - (value - low) / (high - low) * front.height(); }
};

/// The part of the depth that a shape takes up.
struct DepthSlot {
    QPointF offset;
    QPointF thickness;
};

/// A value as it is drawn.
struct DrawnPoint {
    PointIndex index;
    double value = 0.0;
    /// Centre of marker and selection ring; the label is above it.
    QPointF anchor;
    /// The part of the drawing that belongs to this point; null when it is the anchor alone.
    QRectF body;
    /// Points of other series may be inside the body: it counts only where there is no such point.
    bool yields = false;
};

} // namespace chart

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/Chart.h"

#include <QFont>
#include <QPointF>
#include <QRectF>

namespace chart
{

/// Where a chart of a given size puts its values. All lengths are logical pixels.
struct PlotFrame {
    /// The values' rectangle; of a solid chart the front of the room.
    QRectF front;
    /// From the front of the room to its back; null on a flat chart.
    QPointF depth;
    /// Room for the slices and their names.
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

/// The part of the depth that a shape stands in.
struct DepthSlot {
    QPointF offset;
    QPointF thickness;
};

/// A value as it is drawn.
struct Mark {
    PointPlace place;
    double value = 0.0;
    /// Where marker, label and ring belong.
    QPointF anchor;
    /// What of the drawing belongs to this point; null when it is the anchor alone.
    QRectF body;
    /// Points of other series may stand inside the body: it counts only where there is no such point.
    bool broad = false;
};

} // namespace chart

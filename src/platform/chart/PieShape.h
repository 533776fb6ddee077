// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/Shape.h"

namespace chart
{

/// One slice for each series, its value the sum of the column; its point is always the first. Sums of 0 and below have no slice.
class PieShape : public Shape
{
public:
    PieShape(const Chart &chart, const PlotColours &plotColours, std::vector<int> series);

    void arrange(const PlotFrame &frame, const DepthSlot &slot) override;
    void paint(QPainter &painter, const QRectF &exposed) const override;
    std::optional<Hit> hitAt(const QPointF &position) const override;
    QPainterPath ringOf(const DrawnPoint &point) const override;

private:
    struct Slice {
        PointIndex index;
        QPainterPath area;
        /// Unit vector of the slice's middle.
        QPointF direction;
        QString name;
        QString value;
        QRectF label;
    };
    void addSlices(double whole);
    void placeLabels(const PlotFrame &frame, bool right);

    QColor text_;
    QColor muted_;
    QFont font_;
    QPointF centre_;
    double radius_ = 0.0;
    std::vector<Slice> slices_;
};

} // namespace chart

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/Shape.h"

namespace chart
{

/// The bars of all series that are bars, side by side in each row.
class BarShape : public Shape
{
public:
    using Shape::Shape;

    void arrange(const PlotFrame &frame, const DepthSlot &slot) override;
    void paint(QPainter &painter, const QRectF &exposed) const override;

private:
    void addHatchOf(const DrawnPoint &point, std::vector<QLineF> &lines) const;
    void paintFlat(QPainter &painter, const QRectF &exposed) const;
    void paintSolid(QPainter &painter, const QRectF &exposed) const;

    QPointF thickness_;
};

} // namespace chart

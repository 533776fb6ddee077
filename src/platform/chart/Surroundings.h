// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/PlotFrame.h"

#include <QPainter>

#include <vector>

namespace chart
{

struct AxisText {
    double place = 0.0;
    QString text;
};

/// What stands around the shapes beyond two plain axes: the room of a solid chart, the second vertical axis, the depth axis.
class Surroundings
{
public:
    Surroundings(const Chart &chart, const PlotColours &plotColours, const QFont &titleFont);

    void arrange(const PlotFrame &frame, std::vector<AxisText> ticks);
    /// Room that the second and the depth axis need right of the front.
    static double rightMargin(const Chart &chart, const QPointF &depth, const QFont &tickFont, const QFont &titleFont,
                              const std::vector<AxisText> &ticks);

    /// Walls and ground, with the grid on them; nothing on a flat chart.
    void paintRoom(QPainter &painter) const;
    void paintSecondAxis(QPainter &painter) const;

private:
    QString titleOf(AxisId axis) const;

    const Chart &chart_;
    const PlotColours &plotColours_;
    QFont titleFont_;
    PlotFrame frame_;
    std::vector<AxisText> ticks_;
};

} // namespace chart

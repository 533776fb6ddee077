// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/Shape.h"
#include "platform/chart/Surroundings.h"

#include <QMargins>
#include <QSize>

#include <functional>
#include <memory>

class QPaintDevice;

namespace chart
{

/// The frame that the plotting library draws: two axes with their ticks, titles and grid. Shapes and all else are painted into
/// it. It never holds a picture of the whole chart.
class PlotCanvas
{
public:
    using PaintLayer = std::function<void(QPainter &painter, const QRectF &exposed)>;
    enum class Depth { Behind, InFront };

    struct Fonts {
        QFont values;
        QFont rows;
        QFont titles;
    };
    struct Arrangement {
        QSize size;
        /// Around everything; above it stand title and legend.
        QMargins outer;
        /// Room between the frame and what is around it.
        int right = 0;
        int top = 0;
        bool axes = true;
        bool grid = true;
        double low = 0.0;
        double high = 1.0;
        int rows = 0;
        const std::vector<AxisText> *valueTicks = nullptr;
        const std::vector<AxisText> *rowTicks = nullptr;
        Fonts fonts;
        QString rowTitle;
        QString valueTitle;
    };

    explicit PlotCanvas(const PlotColours &plotColours);
    ~PlotCanvas();

    void addLayer(Depth depth, PaintLayer paint);
    /// The shape has to outlive the canvas. Later ones lie in front.
    void addShape(const Shape &shape);
    /// Returns the rectangle of the values.
    QRectF arrange(const Arrangement &wanted);
    void paint(QPaintDevice &device, const QRectF &exposed, bool vectors);

private:
    class Library;
    std::unique_ptr<Library> library_;
};

} // namespace chart

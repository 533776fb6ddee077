// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/PlotCanvas.h"

// The library's header needs the toolkit's keywords, which are switched off in this project.
#define signals Q_SIGNALS
#define foreach Q_FOREACH
#include <qcustomplot.h>
#undef signals
#undef foreach

namespace chart
{

namespace
{

/// While null nothing of ours is painted: the library redraws itself once out of sight.
struct Exposure {
    std::optional<QRectF> part;
};

class LayerItem : public QCPLayerable
{
public:
    LayerItem(QCustomPlot *plot, const QString &layer, const Exposure &exposure, PlotCanvas::PaintLayer paint)
        : QCPLayerable(plot, layer), exposure_(exposure), paint_(std::move(paint))
    {
    }

protected:
    void applyDefaultAntialiasingHint(QCPPainter *painter) const override { painter->setAntialiasing(false); }
    void draw(QCPPainter *painter) override
    {
        if (exposure_.part) {
            // The library's own switch would move everything by half a pixel.
            QPainter &plain = *painter;
            plain.setRenderHint(QPainter::Antialiasing);
            paint_(plain, *exposure_.part);
        }
    }

private:
    const Exposure &exposure_;
    PlotCanvas::PaintLayer paint_;
};

/// UiDriver a shape to the library as one of its plottables.
class ShapePlottable : public QCPAbstractPlottable
{
public:
    ShapePlottable(QCPAxis *keys, QCPAxis *values, const Exposure &exposure, const Shape &shape)
        : QCPAbstractPlottable(keys, values), exposure_(exposure), shape_(shape)
    {
    }

    double selectTest(const QPointF &position, bool, QVariant *) const override
    {
        const auto hit = shape_.hitAt(position);
        return hit ? hit->distance : -1.0;
    }
    QCPRange getKeyRange(bool &found, QCP::SignDomain) const override
    {
        return rangeOf(found, [](const Mark &mark) { return static_cast<double>(mark.place.point); });
    }
    QCPRange getValueRange(bool &found, QCP::SignDomain, const QCPRange &) const override
    {
        return rangeOf(found, [](const Mark &mark) { return mark.value; });
    }

protected:
    // Markers and labels may stand over the edge of the frame.
    QRect clipRect() const override { return mParentPlot->viewport(); }
    void applyDefaultAntialiasingHint(QCPPainter *painter) const override { painter->setAntialiasing(false); }
    void draw(QCPPainter *painter) override
    {
        if (exposure_.part) {
            QPainter &plain = *painter;
            plain.setRenderHint(QPainter::Antialiasing);
            shape_.paint(plain, *exposure_.part);
        }
    }
    void drawLegendIcon(QCPPainter *, const QRectF &) const override {}

private:
    template <typename Measure> QCPRange rangeOf(bool &found, const Measure &measure) const
    {
        QCPRange range;
        found = false;
        for (const Mark &mark : shape_.marks()) {
            const double place = measure(mark);
            if (!found) {
                range = QCPRange(place, place);
            }
            range.expand(place);
            found = true;
        }
        return range;
    }

    const Exposure &exposure_;
    const Shape &shape_;
};

QSharedPointer<QCPAxisTicker> tickerOf(const std::vector<AxisText> &ticks)
{
    auto ticker = QSharedPointer<QCPAxisTickerText>::create();
    for (const AxisText &tick : ticks) {
        ticker->addTick(tick.place, tick.text);
    }
    return ticker;
}

void styleAxis(QCPAxis &axis, const PlotColours &plotColours)
{
    const QPen border(plotColours.border, 1.0);
    axis.setBasePen(border);
    axis.setTickLength(0, 0);
    axis.setSubTicks(false);
    axis.setTickPen(border); // ticks of no length still leave a dot on paper
    axis.setTickLabelColor(plotColours.muted);
    axis.setLabelColor(plotColours.text);
    axis.setTickLabelPadding(8);
    axis.setLabelPadding(8);
    axis.grid()->setPen(QPen(plotColours.line, 1.0));
    axis.grid()->setZeroLinePen(Qt::NoPen);
}

} // namespace

class PlotCanvas::Library : public QCustomPlot
{
public:
    explicit Library(const PlotColours &plotColours)
    {
        setPlottingHints(QCP::phNone);
        setBackground(QBrush(plotColours.background));
        styleAxis(*xAxis, plotColours);
        styleAxis(*yAxis, plotColours);
        xAxis->setTickLabelPadding(4);
        xAxis->grid()->setVisible(false);
        rest();
    }

    Exposure exposure;

    QRectF arrange(const Arrangement &wanted)
    {
        size_ = wanted.size;
        plotLayout()->setMinimumMargins(wanted.outer);
        axisRect()->setMinimumMargins(QMargins(0, wanted.top, wanted.right, 0));
        for (QCPAxis *axis : {xAxis, yAxis}) {
            axis->setVisible(wanted.axes);
            axis->setLabelFont(wanted.fonts.titles);
        }
        yAxis->grid()->setVisible(wanted.grid && wanted.axes);
        xAxis->setTickLabelFont(wanted.fonts.rows);
        yAxis->setTickLabelFont(wanted.fonts.values);
        xAxis->setLabel(wanted.rowTitle);
        yAxis->setLabel(wanted.valueTitle);
        xAxis->setRange(0.5, wanted.rows + 0.5);
        yAxis->setRange(wanted.low, wanted.high);
        xAxis->setTicker(tickerOf(*wanted.rowTicks));
        yAxis->setTicker(tickerOf(*wanted.valueTicks));
        setViewport(QRect(QPoint(), size_));
        QCustomPlot::updateLayout();
        const QRectF front(axisRect()->left(), axisRect()->top(), axisRect()->width(), axisRect()->height());
        rest();
        return front;
    }

    void paint(QCPPainter &painter, const QRectF &exposed)
    {
        setViewport(QRect(QPoint(), size_));
        exposure.part = exposed;
        painter.fillRect(exposed.intersected(viewport()), mBackgroundBrush);
        draw(&painter);
        exposure.part.reset();
        rest();
    }

protected:
    void updateLayout() override {}

private:
    /// The library keeps buffers of the size of its viewport, although nothing is shown from them.
    void rest() { setViewport(QRect(0, 0, 1, 1)); }

    QSize size_;
};

PlotCanvas::PlotCanvas(const PlotColours &plotColours) : library_(std::make_unique<Library>(plotColours)) {}

PlotCanvas::~PlotCanvas() = default;

void PlotCanvas::addLayer(Depth depth, PaintLayer paint)
{
    // The library owns what is put on its layers.
    new LayerItem(library_.get(), depth == Depth::Behind ? QStringLiteral("background") : QStringLiteral("overlay"),
                  library_->exposure, std::move(paint));
}

void PlotCanvas::addShape(const Shape &shape)
{
    new ShapePlottable(library_->xAxis, library_->yAxis, library_->exposure, shape);
}

QRectF PlotCanvas::arrange(const Arrangement &wanted)
{
    return library_->arrange(wanted);
}

void PlotCanvas::paint(QPaintDevice &device, const QRectF &exposed, bool vectors)
{
    QCPPainter painter(&device);
    painter.setMode(QCPPainter::pmNoCaching);
    painter.setMode(QCPPainter::pmVectorized, vectors);
    painter.setMode(QCPPainter::pmNonCosmetic, vectors);
    library_->paint(painter, exposed);
}

} // namespace chart

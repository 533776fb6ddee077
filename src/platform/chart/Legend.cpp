// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/Legend.h"

#include <QFontMetricsF>

#include <algorithm>

namespace chart
{

namespace
{

constexpr double Chip = 12.0;
constexpr double Stroke = 26.0;
constexpr double TextGap = 7.0;
constexpr double WideGap = 28.0;
constexpr double NarrowGap = 14.0;
constexpr double LineGap = 6.0;

bool isStroke(ShapeKind kind)
{
    return kind == ShapeKind::Line || kind == ShapeKind::Step || kind == ShapeKind::Area;
}

double sampleWidth(ShapeKind kind)
{
    return isStroke(kind) ? Stroke : Chip;
}

} // namespace

Legend::Legend(const Chart &chart, const PlotColours &plotColours, const QFont &font) : font_(font), text_(plotColours.text)
{
    if (!chart.ShowLegend()) {
        return;
    }
    for (int column = 1; column <= chart.SeriesCount(); ++column) {
        const ShapeKind kind = shapeKindOf(chart.series(column).SeriesType);
        entries_.push_back({chart.columnLabelAt(column), {}, styleOf(chart, column, plotColours), kind, {}});
    }
}

void Legend::arrange(const QPointF &topLeft, double wantedLeft, double right)
{
    rectangle_ = {};
    const QFontMetricsF metrics(font_);
    const double height = std::max(Chip, metrics.height());
    double names = 0.0;
    for (Entry &entry : entries_) {
        const double sample = sampleWidth(entry.kind) + TextGap;
        entry.shown = metrics.elidedText(entry.name, Qt::ElideRight, std::max(40.0, right - wantedLeft - sample));
        entry.rectangle = QRectF(0.0, 0.0, sample + metrics.horizontalAdvance(entry.shown), height);
        names += entry.rectangle.width();
    }
    // One line where closer entries or the space to the left allow it.
    const double gaps = static_cast<double>(entries_.size()) - 1.0;
    const bool isWide = names + gaps * WideGap <= right - wantedLeft;
    const double narrow = names + gaps * NarrowGap;
    const bool fits = narrow <= right - topLeft.x();
    const double left = isWide || !fits ? wantedLeft : std::clamp(right - narrow, topLeft.x(), wantedLeft);
    QPointF next(left, topLeft.y());
    for (Entry &entry : entries_) {
        if (next.x() > left && next.x() + entry.rectangle.width() > right) {
            next = QPointF(left, next.y() + height + LineGap);
        }
        entry.rectangle.moveTopLeft(next);
        rectangle_ = rectangle_.united(entry.rectangle);
        next.rx() += entry.rectangle.width() + (isWide ? WideGap : NarrowGap);
    }
}

QStringList Legend::texts() const
{
    QStringList texts;
    std::transform(entries_.begin(), entries_.end(), std::back_inserter(texts), [](const Entry &entry) { return entry.name; });
    return texts;
}

void Legend::paint(QPainter &painter) const
{
    painter.setFont(font_);
    for (const Entry &entry : entries_) {
        paintSample(painter, entry);
        painter.setPen(text_);
        painter.drawText(entry.rectangle.adjusted(sampleWidth(entry.kind) + TextGap, 0.0, 4.0, 0.0),
                         Qt::AlignVCenter | Qt::AlignLeft, entry.shown);
    }
}

void Legend::paintSample(QPainter &painter, const Entry &entry) const
{
    QRectF sample(entry.rectangle.topLeft(), QSizeF(sampleWidth(entry.kind), Chip));
    sample.moveTop(std::round(entry.rectangle.center().y() - Chip / 2.0));
    if (!isStroke(entry.kind)) {
        QPainterPath area;
        area.addRect(sample);
        fillArea(painter, entry.style, area);
        return;
    }
    const bool area = entry.kind == ShapeKind::Area;
    const double y = area ? sample.top() : sample.center().y();
    if (area) {
        QColor pale = entry.style.fill;
        pale.setAlphaF(0.4F);
        painter.fillRect(sample, pale);
    }
    drawRun(painter, entry.style, QPolygonF(QList<QPointF>{{sample.left(), y}, {sample.right(), y}}), sample);
    drawMarkers(painter, entry.style, {QPointF(sample.center().x(), y)});
}

} // namespace chart

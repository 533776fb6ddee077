// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/PieShape.h"

#include "platform/chart/ValueScale.h"

#include <QFontMetricsF>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace chart
{

namespace
{

constexpr double LabelGap = 10.0;

/// Name and value below each other.
double labelHeight(const QFontMetricsF &metrics)
{
    return 2.0 * metrics.height() + 2.0;
}

} // namespace

PieShape::PieShape(const Chart &chart, const PlotColours &plotColours, std::vector<int> series)
    : Shape(chart, plotColours, std::move(series)), text_(plotColours.text), muted_(plotColours.muted)
{
}

void PieShape::arrange(const PlotFrame &frame, const DepthSlot &)
{
    ownPoints().clear();
    slices_.clear();
    font_ = frame.font;
    double whole = 0.0;
    double widest = 0.0;
    const QFontMetricsF metrics(font_);
    for (const int column : series()) {
        whole += std::max(0.0, chart().ChartData().columnSum(column).value_or(0.0));
        widest = std::max(widest, metrics.horizontalAdvance(chart().columnLabelAt(column)));
    }
    // The name of a single slice is below it.
    const auto slices = std::count_if(series().begin(), series().end(),
                                      [this](int column) { return chart().ChartData().columnSum(column).value_or(0.0) > 0.0; });
    widest = slices > 1 ? std::min(widest, frame.pie.width() * 0.3) : 0.0;
    centre_ = frame.pie.center();
    radius_ = std::max(
        8.0, std::min(frame.pie.width() / 2.0 - widest - LabelGap, frame.pie.height() / 2.0 - labelHeight(metrics) - LabelGap));
    if (whole > 0.0) {
        addSlices(whole);
    }
    placeLabels(frame, true);
    placeLabels(frame, false);
}

void PieShape::addSlices(double whole)
{
    const QRectF disc(centre_ - QPointF(radius_, radius_), QSizeF(2 * radius_, 2 * radius_));
    double turned = 0.0;
    for (const int column : series()) {
        const double sum = chart().ChartData().columnSum(column).value_or(0.0);
        if (sum <= 0.0) {
            continue;
        }
        // From twelve o'clock, clockwise; QPainterPath counts angles counter-clockwise from three o'clock.
        const double start = 90.0 - turned / whole * 360.0;
        const double span = -sum / whole * 360.0;
        turned += sum;
        QPainterPath area;
        if (sum == whole) {
            area.addEllipse(disc);
        } else {
            area.moveTo(centre_);
            area.arcTo(disc, start, span);
            area.closeSubpath();
        }
        const double middle = qDegreesToRadians(start + span / 2.0);
        const QPointF direction(std::cos(middle), -std::sin(middle));
        slices_.push_back({{column, 1}, area, direction, chart().columnLabelAt(column), valueText(sum), {}});
        const QPointF anchor = sum == whole ? centre_ : centre_ + direction * radius_ * 0.65;
        ownPoints().push_back({{column, 1}, sum, anchor, {}});
    }
}

/// Places the names of one side from top to bottom, pushed apart where slices are narrow.
void PieShape::placeLabels(const PlotFrame &frame, bool right)
{
    const QFontMetricsF metrics(font_);
    const double height = labelHeight(metrics);
    std::vector<Slice *> side;
    for (Slice &slice : slices_) {
        if ((slice.direction.x() >= 0.0) == right) {
            side.push_back(&slice);
        }
    }
    std::sort(side.begin(), side.end(),
              [](const Slice *one, const Slice *two) { return one->direction.y() < two->direction.y(); });
    double free = frame.pie.top();
    double rest = static_cast<double>(side.size()) * height;
    for (Slice *slice : side) {
        const QPointF tip = centre_ + slice->direction * (radius_ + LabelGap);
        const double lowest = frame.pie.bottom() - rest;
        // Above a slice at the top, below one at the bottom, else to its side.
        const double wanted = tip.y() - height * (1.0 - slice->direction.y()) / 2.0;
        const double top = std::max(free, std::min(wanted, lowest));
        const double edge = right ? frame.pie.right() : frame.pie.left();
        slice->label = slices_.size() > 1 ? QRectF(QPointF(tip.x(), top), QPointF(edge, top + height)).normalized()
                                          : QRectF(frame.pie.left(), top, frame.pie.width(), height);
        free = top + height;
        rest -= height;
    }
}

void PieShape::paint(QPainter &painter, const QRectF &) const
{
    for (const Slice &slice : slices_) {
        fillArea(painter, style(slice.index.series), slice.area);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setFont(font_);
    const QFontMetricsF metrics(font_);
    for (const Slice &slice : slices_) {
        const SeriesStyle &each = style(slice.index.series);
        if (slices_.size() > 1) {
            painter.setPen(QPen(each.paper, 1.5));
            painter.drawPath(slice.area);
        }
        const bool right = slice.direction.x() >= 0.0;
        const QPointF labelEnd(right ? slice.label.left() - 3.0 : slice.label.right() + 3.0, slice.label.center().y());
        if (std::abs(slice.direction.y()) < 0.9) {
            painter.setPen(QPen(muted_, 1.0));
            painter.drawLine(centre_ + slice.direction * (radius_ + 2.0), labelEnd);
        }
        const int side = slices_.size() == 1 ? Qt::AlignHCenter : right ? Qt::AlignLeft : Qt::AlignRight;
        const QString name = metrics.elidedText(slice.name, Qt::ElideRight, slice.label.width());
        painter.setPen(muted_);
        painter.drawText(slice.label, side | Qt::AlignTop, name);
        painter.setPen(text_);
        painter.drawText(slice.label, side | (name.isEmpty() ? Qt::AlignVCenter : Qt::AlignBottom), slice.value);
    }
}

std::optional<Shape::Hit> PieShape::hitAt(const QPointF &position) const
{
    const auto found =
        std::find_if(slices_.begin(), slices_.end(), [&position](const Slice &slice) { return slice.area.contains(position); });
    return found == slices_.end() ? std::nullopt : std::optional(Hit{found->index, 0.0});
}

QPainterPath PieShape::ringOf(const DrawnPoint &point) const
{
    const auto found =
        std::find_if(slices_.begin(), slices_.end(), [&point](const Slice &slice) { return slice.index == point.index; });
    return found == slices_.end() ? QPainterPath() : found->area;
}

} // namespace chart

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/Plot.h"

#include "platform/chart/ChartShapes.h"
#include "platform/chart/ValueScale.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace chart
{

namespace
{

constexpr int Edge = 12;
constexpr double LabelGap = 12.0;
constexpr double TightLabelGap = 2.5;
constexpr double TickFontPart = 0.9;
constexpr double TightFontPart = 0.8;
/// Least space above the values, for the label of the highest.
constexpr int LabelSpace = 20;

/// In pixels, so that text keeps its proportion to the drawing on paper.
QFont inPixels(QFont font, double part)
{
    const double pixels = QFontMetricsF(font).fontDpi() / 72.0 * font.pointSizeF();
    font.setPixelSize(std::max(1, static_cast<int>(std::lround((font.pixelSize() > 0 ? font.pixelSize() : pixels) * part))));
    return font;
}

QFont bold(QFont font)
{
    font.setWeight(QFont::DemiBold);
    return font;
}

QRectF markerRectangle(const QPointF &anchor, double size)
{
    return {anchor.x() - size / 2.0, anchor.y() - size / 2.0, size, size};
}

/// Rectangles sorted from the left, so that few of them are compared with each label.
class SortedRectangles
{
public:
    void add(const QRectF &rectangle)
    {
        rectangles_.push_back(rectangle);
        widest_ = std::max(widest_, rectangle.width());
    }
    void sort()
    {
        std::sort(rectangles_.begin(), rectangles_.end(),
                  [](const QRectF &one, const QRectF &two) { return one.left() < two.left(); });
    }
    bool intersects(const QRectF &label) const
    {
        const auto isLeftOf = [](const QRectF &each, double x) { return each.left() < x; };
        const auto first = std::lower_bound(rectangles_.begin(), rectangles_.end(), label.left() - widest_, isLeftOf);
        const auto last = std::lower_bound(first, rectangles_.end(), label.right(), isLeftOf);
        return std::any_of(first, last, [&label](const QRectF &each) { return each.intersects(label); });
    }

private:
    std::vector<QRectF> rectangles_;
    double widest_ = 0.0;
};

} // namespace

Plot::Plot(const Chart &chart, const PlotColours &plotColours, const QFont &font, const QSize &size, int legendWidth)
    : chart_(chart), plotColours_(plotColours), textFont_(inPixels(font, 1.0)), tickFont_(inPixels(font, TickFontPart)),
      headFont_(bold(inPixels(font, 1.15))), legend_(chart, plotColours, textFont_), axes_(chart, plotColours_, textFont_)
{
    if (!isEmpty()) {
        shapes_ = shapesOf(chart_, plotColours_);
    }
    layOut(size, legendWidth);
}

bool Plot::hasAxes() const
{
    return std::any_of(chart_.allSeries().begin(), chart_.allSeries().end(),
                       [](const Series &each) { return shapeKindOf(each.SeriesType) != ShapeKind::Pie; });
}

bool Plot::hasPie() const
{
    return std::any_of(chart_.allSeries().begin(), chart_.allSeries().end(),
                       [](const Series &each) { return shapeKindOf(each.SeriesType) == ShapeKind::Pie; });
}

void Plot::layOut(const QSize &size, int legendWidth)
{
    size_ = size;
    legendWidth_ = legendWidth > 0 ? legendWidth : size.width();
    if (isEmpty()) {
        return;
    }
    // Slices among other kinds have a column of their own on the right.
    const int pieWidth = hasAxes() && hasPie() ? std::min(size.width() * 32 / 100, size.height()) : 0;
    frame_.rows = chart_.RowCount();
    frame_.depth = depthAt(size);
    frame_.font = tickFont_;
    measureRowTexts();
    // Ticks and legend depend on the size of the frame and the other way round; the second pass settles both.
    frame_.front = QRectF(QRect(QPoint(), size).adjusted(60, 60, -60 - pieWidth, -60));
    layOutFrame(pieWidth);
    layOutFrame(pieWidth);
    axes_.arrange(frame_);
    arrangeShapes();
    placeValueLabels();
}

void Plot::layOutFrame(int pieWidth)
{
    const int head = headHeight(hasAxes() ? frame_.front.left() : Edge);
    chooseTicks();
    const QMarginsF around = axes_.margins(frame_.depth);
    // Whole pixels, so that the lines of the axes are sharp.
    const QPoint topLeft(static_cast<int>(std::ceil(around.left())) + Edge / 2,
                         head + LabelSpace - static_cast<int>(frame_.depth.y()));
    const QPoint bottomRight(size_.width() - pieWidth - static_cast<int>(std::ceil(around.right())),
                             size_.height() - static_cast<int>(std::ceil(around.bottom())));
    frame_.front =
        QRectF(topLeft, QSizeF(std::max(bottomRight.x() - topLeft.x(), 1), std::max(bottomRight.y() - topLeft.y(), 1)));
    frame_.pie = hasAxes() ? QRectF(size_.width() - pieWidth + Edge, head + Edge, pieWidth - 2 * Edge, frame_.front.height())
                           : QRectF(QRect(QPoint(), size_).adjusted(2 * Edge, head + Edge, -2 * Edge, -2 * Edge));
}

std::vector<AxisTick> Plot::scaleValues(double height)
{
    double least = 0.0;
    double greatest = 0.0;
    bool whole = true;
    bool any = false;
    for (int column = 1; column <= chart_.SeriesCount(); ++column) {
        const bool slice = shapeKindOf(chart_.series(column).SeriesType) == ShapeKind::Pie;
        for (int row = 1; row <= chart_.RowCount() && !slice; ++row) {
            if (const auto value = chart_.ChartData().value(row, column)) {
                any = true;
                least = std::min(least, *value);
                greatest = std::max(greatest, *value);
                whole = whole && *value == std::floor(*value);
            }
        }
    }
    const double closest = 2.7 * QFontMetricsF(tickFont_).height();
    const ValueScale scale = ValueScale::over(least, greatest, whole, height, closest);
    frame_.low = scale.low;
    frame_.high = scale.high;
    std::vector<AxisTick> ticks;
    // Without a value there is nothing to measure.
    if (any) {
        std::transform(scale.ticks.begin(), scale.ticks.end(), std::back_inserter(ticks), [](double tick) {
            return AxisTick{tick, valueText(tick)};
        });
    }
    return ticks;
}

void Plot::chooseTicks()
{
    std::vector<AxisTick> values = scaleValues(frame_.front.height());
    auto [rows, rowFont] = rowLabels(frame_.rowWidth());
    axes_.setTicks(std::move(values), std::move(rows), tickFont_, rowFont);
}

QString Plot::rowText(int row) const
{
    return chart_.chartType() == ChartType::XY2d ? QString::number(row) : chart_.rowLabelAt(row);
}

void Plot::measureRowTexts()
{
    const QFontMetricsF metrics(tickFont_);
    rowWidths_.clear();
    for (int row = 1; row <= chart_.RowCount(); ++row) {
        rowWidths_.push_back(metrics.horizontalAdvance(rowText(row)));
    }
}

std::pair<std::vector<AxisTick>, QFont> Plot::rowLabels(double rowWidth) const
{
    const auto all = rowWidths_.size();
    QFont font = tickFont_;
    std::vector<int> shown = labelsThatFit(rowWidths_, rowWidth, LabelGap / 2.0);
    if (shown.size() < all) {
        std::vector<double> tight(all);
        const double part = TightFontPart / TickFontPart;
        std::transform(rowWidths_.begin(), rowWidths_.end(), tight.begin(), [part](double width) { return width * part; });
        shown = labelsThatFit(tight, rowWidth, TightLabelGap);
        if (shown.size() == all) {
            font.setPixelSize(std::max(1, static_cast<int>(tickFont_.pixelSize() * part)));
        } else {
            shown = labelsThatFit(rowWidths_, rowWidth, LabelGap);
        }
    }
    if (shown.size() < all && !chart_.unitRows().empty()) {
        return {unitLabels(), tickFont_};
    }
    std::vector<AxisTick> ticks;
    std::transform(shown.begin(), shown.end(), std::back_inserter(ticks), [this](int label) {
        return AxisTick{static_cast<double>(label + 1), rowText(label + 1)};
    });
    return {ticks, font};
}

std::vector<AxisTick> Plot::unitLabels() const
{
    std::vector<AxisTick> ticks;
    double occupied = -LabelGap;
    for (const int row : chart_.unitRows()) {
        const double half = rowWidths_[static_cast<std::size_t>(row - 1)] / 2.0;
        if (frame_.x(row) - half >= occupied + LabelGap || ticks.empty()) {
            ticks.push_back({static_cast<double>(row), rowText(row)});
            occupied = frame_.x(row) + half;
        }
    }
    return ticks;
}

QPointF Plot::depthAt(const QSize &size) const
{
    if (!chart_.Chart3d() || !hasAxes()) {
        return {};
    }
    const auto slots = shapes_.size() - (hasPie() ? 1 : 0);
    const double most = std::min(0.14 * size.width(), 0.2 * size.height());
    double across = std::min(most, 14.0 + 0.024 * size.width() * static_cast<double>(slots));
    if (slots == 1 && shapes_.front()->series().size() > 1) {
        // Bars alone need no more than the depth of one bar.
        const double bar = 0.8 * size.width() / chart_.RowCount() / static_cast<double>(shapes_.front()->series().size());
        across = std::clamp(bar, 12.0, std::max(12.0, std::min(most, 48.0)));
    }
    return {std::round(across), -std::round(0.6 * across)};
}

int Plot::headHeight(double left)
{
    double top = Edge;
    if (!chart_.TitleText().isEmpty()) {
        top += QFontMetricsF(headFont_).height() + Edge / 2.0;
    }
    legend_.arrange({Edge, top}, left, legendWidth_ - Edge);
    if (const QRectF names = legend_.rectangle(); !names.isEmpty()) {
        top = names.bottom();
    }
    return static_cast<int>(std::ceil(top));
}

void Plot::arrangeShapes()
{
    const auto count = static_cast<double>(std::max<std::size_t>(shapes_.size(), 1));
    double behind = count - 1.0;
    for (const auto &shape : shapes_) {
        shape->arrange(frame_, {frame_.depth * (behind / count), frame_.depth * (0.75 / count)});
        behind -= 1.0;
    }
}

void Plot::placeValueLabels()
{
    valueLabels_.clear();
    struct Wanted {
        const DrawnPoint *point;
        const SeriesStyle *style;
    };
    std::vector<Wanted> wanted;
    SortedRectangles markers;
    SortedRectangles bars;
    for (const auto &shape : shapes_) {
        for (const DrawnPoint &point : shape->points()) {
            const SeriesStyle &style = shape->style(point.index.series);
            const ShapeKind kind = shapeKindOf(chart_.series(point.index.series).SeriesType);
            if (kind == ShapeKind::Pie) {
                continue;
            }
            if (kind == ShapeKind::Bar) {
                bars.add(point.body);
            }
            if (style.marker != MarkerStyle::None) {
                markers.add(markerRectangle(point.anchor, style.markerSize));
            }
            if (style.showLabels) {
                wanted.push_back({&point, &style});
            }
        }
    }
    markers.sort();
    bars.sort();
    std::stable_sort(wanted.begin(), wanted.end(),
                     [](const Wanted &one, const Wanted &two) { return one.point->value > two.point->value; });
    const QFontMetricsF metrics(tickFont_);
    for (const auto &[point, style] : wanted) {
        const QString text = valueText(point->value);
        const double width = metrics.horizontalAdvance(text) + 2.0;
        const double height = metrics.ascent() + 1.0;
        const double lift = style->marker == MarkerStyle::None ? 3.0 : style->markerSize / 2.0 + 2.0;
        const QRectF rectangle(point->anchor.x() - width / 2.0, point->anchor.y() - lift - height, width, height);
        const bool covered = std::any_of(valueLabels_.begin(), valueLabels_.end(),
                                         [&rectangle](const ValueLabel &other) { return other.rectangle.intersects(rectangle); });
        // A zero is not worth a gap in the bar of another series.
        const bool isZeroOverBar = point->value == 0.0 && bars.intersects(rectangle);
        if (!covered && !isZeroOverBar && !markers.intersects(rectangle)) {
            valueLabels_.push_back({point->index, rectangle, text});
        }
    }
}

/// A solid chart scrolls with its walls; slices have no axes.
AxesView Plot::axesView(const QRectF &seen) const
{
    const QRectF whole(QPointF(), size_);
    QRectF inner = frame_.front;
    if (!frame_.depth.isNull() || hasPie()) {
        inner = inner.intersected(seen);
        return {inner.isEmpty() ? frame_.front : inner, {}, {}};
    }
    inner = seen.adjusted(inner.left(), std::max(inner.top() - seen.top(), legendBottom() + Edge / 2.0),
                          inner.right() - whole.right(), inner.bottom() - whole.bottom());
    return {inner, seen.topLeft(), seen.bottomRight() - whole.bottomRight()};
}

double Plot::legendBottom() const
{
    return legend_.rectangle().bottom() + Edge / 2.0;
}

QRectF Plot::shapesIn(const QRectF &seen) const
{
    const AxesView view = axesView(seen);
    const bool scrollsWhole = view.start.isNull() && view.end.isNull();
    return scrollsWhole ? seen.adjusted(0.0, legendBottom(), 0.0, 0.0) : view.inner.adjusted(0.0, 0.0, 1.0, 1.0);
}

void Plot::paint(QPainter &painter, const QRectF &exposed, const QRectF &seen) const
{
    const QRectF whole(QPointF(), size_);
    const AxesView view = isPart(seen) ? axesView(seen) : AxesView{frame_.front, {}, {}};
    painter.save();
    painter.fillRect(exposed.intersected(whole), plotColours_.background);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isPart(seen)) {
        painter.setClipRect(shapesIn(seen));
    }
    if (hasAxes()) {
        axes_.paintGrid(painter);
    }
    for (const auto &shape : shapes_) {
        shape->paint(painter, exposed);
    }
    paintValueLabels(painter, exposed, seen);
    painter.setClipping(false);
    if (hasAxes()) {
        axes_.paint(painter, view);
    }
    if (!isEmpty()) {
        paintHead(painter, isPart(seen) ? seen.topLeft() : QPointF());
    }
    painter.restore();
}

void Plot::paintHead(QPainter &painter, const QPointF &legendOffset) const
{
    const double left = hasAxes() ? frame_.front.left() : Edge;
    painter.setFont(headFont_);
    painter.setPen(plotColours_.text);
    painter.drawText(QRectF(left, Edge, size_.width() - left - Edge, QFontMetricsF(headFont_).height()),
                     Qt::AlignLeft | Qt::AlignVCenter, chart_.TitleText());
    if (!legendOffset.isNull()) {
        painter.translate(legendOffset);
        // From the top of the visible part on, so that nothing of the chart shows above the names.
        painter.fillRect(QRectF(0.0, 0.0, legendWidth_, legendBottom()), plotColours_.background);
    }
    legend_.paint(painter);
}

void Plot::paintValueLabels(QPainter &painter, const QRectF &exposed, const QRectF &seen) const
{
    // The edge of a visible part must not make another number of a label.
    const QRectF inner = isPart(seen) ? shapesIn(seen) : QRectF(QPointF(), size_);
    painter.setFont(tickFont_);
    painter.setPen(plotColours_.text);
    QColor veil = plotColours_.background;
    veil.setAlphaF(0.85F);
    for (const ValueLabel &label : valueLabels_) {
        const bool isCut = label.rectangle.left() < inner.left() || label.rectangle.right() > inner.right();
        if (!isCut && label.rectangle.intersects(exposed)) {
            painter.fillRect(label.rectangle, veil);
            painter.drawText(label.rectangle.adjusted(-4.0, -6.0, 4.0, 3.0), Qt::AlignCenter, label.text);
        }
    }
}

std::optional<PointIndex> Plot::pointAt(const QPointF &position, const QRectF &seen) const
{
    if (isPart(seen) && !shapesIn(seen).contains(position)) {
        return std::nullopt;
    }
    std::optional<Shape::Hit> best;
    for (const auto &shape : shapes_) {
        const auto hit = shape->hitAt(position);
        // A later shape is in front.
        if (hit && (!best || hit->distance <= best->distance)) {
            best = hit;
        }
    }
    return best ? std::optional(best->index) : std::nullopt;
}

const DrawnPoint *Plot::drawnPoint(const PointIndex &index) const
{
    for (const auto &shape : shapes_) {
        const auto &points = shape->points();
        const auto found =
            std::find_if(points.begin(), points.end(), [&index](const DrawnPoint &point) { return point.index == index; });
        if (found != points.end()) {
            return &*found;
        }
    }
    return nullptr;
}

QPainterPath Plot::ringOf(const PointIndex &index) const
{
    const DrawnPoint *point = drawnPoint(index);
    for (const auto &shape : shapes_) {
        const auto &drawn = shape->series();
        if (point && std::find(drawn.begin(), drawn.end(), index.series) != drawn.end()) {
            return shape->ringOf(*point);
        }
    }
    return {};
}

std::vector<PointIndex> Plot::pointsOf(int series) const
{
    std::vector<PointIndex> points;
    for (const auto &shape : shapes_) {
        for (const DrawnPoint &point : shape->points()) {
            if (point.index.series == series) {
                points.push_back(point.index);
            }
        }
    }
    return points;
}

} // namespace chart

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/Plot.h"

#include "platform/chart/ChartShapes.h"
#include "platform/chart/PlotCanvas.h"
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
/// Lowest room over the values, for a label of the highest.
constexpr int HeadRoom = 20;

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

/// The places that markers fill, in their order from the left, so that few of them are looked at for each label.
class MarkerRooms
{
public:
    void add(const QPointF &anchor, const SeriesStyle &look)
    {
        if (look.marker != MarkerStyle::None) {
            const double half = look.markerSize / 2.0;
            rooms_.emplace_back(anchor.x() - half, anchor.y() - half, look.markerSize, look.markerSize);
            broadest_ = std::max(broadest_, look.markerSize);
        }
    }
    void sort()
    {
        std::sort(rooms_.begin(), rooms_.end(), [](const QRectF &one, const QRectF &two) { return one.left() < two.left(); });
    }
    bool anyIn(const QRectF &room) const
    {
        const auto isLeftOf = [](const QRectF &marker, double x) { return marker.left() < x; };
        const auto first = std::lower_bound(rooms_.begin(), rooms_.end(), room.left() - broadest_, isLeftOf);
        const auto last = std::lower_bound(first, rooms_.end(), room.right(), isLeftOf);
        return std::any_of(first, last, [&room](const QRectF &marker) { return marker.intersects(room); });
    }

private:
    std::vector<QRectF> rooms_;
    double broadest_ = 0.0;
};

} // namespace

Plot::Plot(const Chart &chart, const PlotColours &plotColours, const QFont &font, const QSize &size)
    : chart_(chart), plotColours_(plotColours), textFont_(inPixels(font, 1.0)), tickFont_(inPixels(font, TickFontPart)),
      rowFont_(tickFont_), headFont_(bold(inPixels(font, 1.15))), legend_(chart, plotColours, textFont_),
      surroundings_(chart, plotColours_, textFont_)
{
    if (!isEmpty()) {
        shapes_ = shapesOf(chart_, plotColours_);
        canvas_ = std::make_unique<PlotCanvas>(plotColours_);
        canvas_->addLayer(PlotCanvas::Depth::Behind,
                          [this](QPainter &painter, const QRectF &) { surroundings_.paintRoom(painter); });
        for (const auto &shape : shapes_) {
            canvas_->addShape(*shape);
        }
        canvas_->addLayer(PlotCanvas::Depth::InFront, [this](QPainter &painter, const QRectF &exposed) {
            if (hasAxes()) {
                surroundings_.paintSecondAxis(painter);
            }
            paintValueLabels(painter, exposed);
            paintHead(painter);
        });
    }
    layOut(size);
}

Plot::~Plot() = default;

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

void Plot::layOut(const QSize &size)
{
    size_ = size;
    if (isEmpty()) {
        return;
    }
    // Slices among other kinds stand beside the frame.
    const int pieWidth = hasAxes() && hasPie() ? std::min(size.width() * 32 / 100, size.height()) : 0;
    frame_.rows = chart_.RowCount();
    frame_.depth = depthAt(size);
    frame_.font = tickFont_;
    measureRowTexts();
    // What surrounds the frame depends on its size and the other way round; the second pass has it right.
    frame_.front = QRectF(QRect(QPoint(), size).adjusted(60, 60, -60 - pieWidth, -60));
    layOutFrame(pieWidth);
    layOutFrame(pieWidth);
    surroundings_.arrange(frame_, valueTicks_);
    arrangeShapes();
    placeValueLabels();
}

void Plot::layOutFrame(int pieWidth)
{
    const int head = headHeight(hasAxes() ? frame_.front.left() : Edge);
    scaleValues(frame_.front.height());
    chooseRowLabels(frame_.rowWidth());
    PlotCanvas::Arrangement wanted;
    wanted.size = size_;
    wanted.outer = QMargins(Edge, head, pieWidth, Edge);
    wanted.right =
        static_cast<int>(std::ceil(Surroundings::rightMargin(chart_, frame_.depth, tickFont_, textFont_, valueTicks_)));
    wanted.top = HeadRoom + static_cast<int>(-frame_.depth.y());
    wanted.axes = hasAxes();
    wanted.grid = frame_.depth.isNull();
    wanted.low = frame_.low;
    wanted.high = frame_.high;
    wanted.rows = frame_.rows;
    wanted.valueTicks = &valueTicks_;
    wanted.rowTicks = &rowTicks_;
    wanted.fonts = {tickFont_, rowFont_, textFont_};
    wanted.rowTitle = chart_.AxisTitleVisible(AxisId::X) ? chart_.AxisTitle(AxisId::X) : QString();
    wanted.valueTitle = chart_.AxisTitleVisible(AxisId::Y) ? chart_.AxisTitle(AxisId::Y) : QString();
    frame_.front = canvas_->arrange(wanted);
    frame_.pie = hasAxes() ? QRectF(size_.width() - pieWidth + Edge, head + Edge, pieWidth - 2 * Edge, frame_.front.height())
                           : QRectF(QRect(QPoint(), size_).adjusted(2 * Edge, head + Edge, -2 * Edge, -2 * Edge));
}

void Plot::scaleValues(double height)
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
    valueTicks_.clear();
    for (const double tick : scale.ticks) {
        // Without a value there is nothing to measure.
        if (any) {
            valueTicks_.push_back({tick, valueText(tick)});
        }
    }
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

void Plot::chooseRowLabels(double rowWidth)
{
    const auto all = rowWidths_.size();
    rowFont_ = tickFont_;
    std::vector<int> kept = labelsThatFit(rowWidths_, rowWidth, LabelGap / 2.0);
    if (kept.size() < all) {
        std::vector<double> tight(all);
        const double part = TightFontPart / TickFontPart;
        std::transform(rowWidths_.begin(), rowWidths_.end(), tight.begin(), [part](double width) { return width * part; });
        kept = labelsThatFit(tight, rowWidth, TightLabelGap);
        if (kept.size() == all) {
            rowFont_.setPixelSize(std::max(1, static_cast<int>(tickFont_.pixelSize() * part)));
        } else {
            kept = labelsThatFit(rowWidths_, rowWidth, LabelGap);
        }
    }
    rowTicks_.clear();
    for (const int label : kept) {
        rowTicks_.push_back({static_cast<double>(label + 1), rowText(label + 1)});
    }
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
        // Bars alone need no more than their own depth.
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
    legend_.arrange(QPointF(left, top), size_.width() - left - 2 * Edge);
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
        const Mark *mark;
        const SeriesStyle *look;
    };
    std::vector<Wanted> wanted;
    MarkerRooms markers;
    for (const auto &shape : shapes_) {
        for (const Mark &mark : shape->marks()) {
            const SeriesStyle &look = shape->look(mark.place.series);
            if (shapeKindOf(chart_.series(mark.place.series).SeriesType) == ShapeKind::Pie) {
                continue;
            }
            markers.add(mark.anchor, look);
            if (look.showLabels) {
                wanted.push_back({&mark, &look});
            }
        }
    }
    markers.sort();
    std::stable_sort(wanted.begin(), wanted.end(),
                     [](const Wanted &one, const Wanted &two) { return one.mark->value > two.mark->value; });
    const QFontMetricsF metrics(tickFont_);
    for (const auto &[mark, look] : wanted) {
        const QString text = valueText(mark->value);
        const double width = metrics.horizontalAdvance(text) + 2.0;
        const double height = metrics.ascent() + 1.0;
        const double lift = look->marker == MarkerStyle::None ? 3.0 : look->markerSize / 2.0 + 2.0;
        const QRectF room(mark->anchor.x() - width / 2.0, mark->anchor.y() - lift - height, width, height);
        const bool covered = std::any_of(valueLabels_.begin(), valueLabels_.end(),
                                         [&room](const ValueLabel &other) { return other.room.intersects(room); });
        if (!covered && !markers.anyIn(room)) {
            valueLabels_.push_back({mark->place, room, text});
        }
    }
}

void Plot::paint(QPaintDevice &device, const QRectF &exposed, Target target) const
{
    if (canvas_) {
        canvas_->paint(device, exposed, target == Target::Vectors);
        return;
    }
    QPainter painter(&device);
    painter.fillRect(QRect(QPoint(), size_), plotColours_.background);
}

void Plot::paintHead(QPainter &painter) const
{
    const double left = hasAxes() ? frame_.front.left() : Edge;
    painter.setFont(headFont_);
    painter.setPen(plotColours_.text);
    painter.drawText(QRectF(left, Edge, size_.width() - left - Edge, QFontMetricsF(headFont_).height()),
                     Qt::AlignLeft | Qt::AlignVCenter, chart_.TitleText());
    legend_.paint(painter);
}

void Plot::paintValueLabels(QPainter &painter, const QRectF &exposed) const
{
    painter.setFont(tickFont_);
    painter.setPen(plotColours_.text);
    QColor veil = plotColours_.background;
    veil.setAlphaF(0.6F);
    for (const ValueLabel &label : valueLabels_) {
        if (label.room.intersects(exposed)) {
            painter.fillRect(label.room, veil);
            painter.drawText(label.room.adjusted(-4.0, -6.0, 4.0, 3.0), Qt::AlignCenter, label.text);
        }
    }
}

std::optional<PointPlace> Plot::pointAt(const QPointF &position) const
{
    std::optional<Shape::Hit> best;
    for (const auto &shape : shapes_) {
        const auto hit = shape->hitAt(position);
        // The later shape lies in front.
        if (hit && (!best || hit->distance <= best->distance)) {
            best = hit;
        }
    }
    return best ? std::optional(best->place) : std::nullopt;
}

const Mark *Plot::markOf(const PointPlace &place) const
{
    for (const auto &shape : shapes_) {
        const auto &marks = shape->marks();
        const auto found = std::find_if(marks.begin(), marks.end(), [&place](const Mark &mark) { return mark.place == place; });
        if (found != marks.end()) {
            return &*found;
        }
    }
    return nullptr;
}

QPainterPath Plot::ringOf(const PointPlace &place) const
{
    const Mark *mark = markOf(place);
    for (const auto &shape : shapes_) {
        const auto &drawn = shape->series();
        if (mark && std::find(drawn.begin(), drawn.end(), place.series) != drawn.end()) {
            return shape->ringOf(*mark);
        }
    }
    return {};
}

std::vector<PointPlace> Plot::pointsOf(int series) const
{
    std::vector<PointPlace> points;
    for (const auto &shape : shapes_) {
        for (const Mark &mark : shape->marks()) {
            if (mark.place.series == series) {
                points.push_back(mark.place);
            }
        }
    }
    return points;
}

} // namespace chart

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/SeriesStyle.h"

#include <QPainterPath>
#include <QRadialGradient>

#include <algorithm>
#include <array>
#include <cmath>

namespace chart
{

namespace
{

constexpr double HatchStep = 6.0;
constexpr double PaperHatchStep = 3.0;
constexpr std::array Hatches = {Hatch::None, Hatch::Rising, Hatch::Falling, Hatch::Level, Hatch::Crossed};

/// Alternating stroke and gap, in pen widths; empty for a continuous line.
std::vector<double> patternOf(PenStyle style)
{
    switch (style) {
    case PenStyle::Dashed:
        return {6, 3};
    case PenStyle::Dotted:
        return {2, 2};
    case PenStyle::DashDot:
        return {8, 3, 1.5, 3};
    case PenStyle::DashDotDot:
        return {8, 3, 1.5, 2, 1.5, 3};
    case PenStyle::Ditted:
        return {3, 2};
    case PenStyle::DashDitted:
        return {8, 3, 3, 3};
    case PenStyle::DashDitDit:
        return {8, 3, 3, 2, 3, 3};
    case PenStyle::NoLine:
    case PenStyle::Solid:
        break;
    }
    return {};
}

/// Cuts a run into strokes; the pattern continues across corners.
class Dasher
{
public:
    Dasher(std::vector<double> pattern, double unit) : pattern_(std::move(pattern)), unit_(unit), left_(pattern_.front() * unit)
    {
    }

    void add(std::vector<QLineF> &strokes, const QLineF &piece)
    {
        const double length = piece.length();
        double from = 0.0;
        while (from < length) {
            const double to = std::min(length, from + left_);
            if (index_ % 2 == 0) {
                strokes.emplace_back(piece.pointAt(from / length), piece.pointAt(to / length));
            }
            advance(to - from);
            from = to;
        }
    }
    /// Advances the pattern as if the piece had been drawn.
    void skip(double length)
    {
        double whole = 0.0;
        for (const double part : pattern_) {
            whole += part * unit_;
        }
        for (double rest = std::fmod(length, whole); rest > 0.0;) {
            const double step = std::min(rest, left_);
            advance(step);
            rest -= step;
        }
    }

private:
    void advance(double length)
    {
        left_ -= length;
        if (left_ <= 1e-9) {
            index_ = (index_ + 1) % pattern_.size();
            left_ = pattern_[index_] * unit_;
        }
    }

    std::vector<double> pattern_;
    double unit_;
    std::size_t index_ = 0;
    double left_;
};

QPolygonF markerPolygon(MarkerStyle style, double half)
{
    switch (style) {
    case MarkerStyle::Square:
    case MarkerStyle::FilledSquare:
        return QPolygonF(QRectF(-half * 0.9, -half * 0.9, 1.8 * half, 1.8 * half));
    case MarkerStyle::Diamond:
    case MarkerStyle::FilledDiamond:
        return QPolygonF({{0, -half * 1.15}, {half * 1.15, 0}, {0, half * 1.15}, {-half * 1.15, 0}});
    case MarkerStyle::Triangle:
    case MarkerStyle::FilledTriangle:
        return QPolygonF({{0, -half}, {half, half * 0.8}, {-half, half * 0.8}});
    case MarkerStyle::DownTriangle:
    case MarkerStyle::FilledDownTriangle:
        return QPolygonF({{0, half}, {half, -half * 0.8}, {-half, -half * 0.8}});
    default:
        return {};
    }
}

std::vector<QLineF> markerStrokes(MarkerStyle style, double half)
{
    const double slant = half * 0.75;
    const QLineF level(-half, 0, half, 0);
    const QLineF upright(0, -half, 0, half);
    const QLineF rising(-slant, slant, slant, -slant);
    const QLineF falling(-slant, -slant, slant, slant);
    switch (style) {
    case MarkerStyle::Dash:
        return {level};
    case MarkerStyle::Plus:
        return {level, upright};
    case MarkerStyle::X:
        return {rising, falling};
    case MarkerStyle::Star:
        return {level, upright, rising, falling};
    default:
        return {};
    }
}

bool isOpen(MarkerStyle style)
{
    return style >= MarkerStyle::Circle && style <= MarkerStyle::DownTriangle;
}

void drawBall(QPainter &painter, const SeriesStyle &style, const QPointF &position)
{
    const double half = style.markerSize / 2.0;
    QRadialGradient shine(position - QPointF(half, half) * 0.35, half * 1.4);
    shine.setColorAt(0.0, mixed(style.markerFill, Qt::white, 0.75));
    shine.setColorAt(1.0, mixed(style.markerFill, Qt::black, 0.25));
    painter.setPen(Qt::NoPen);
    painter.setBrush(shine);
    painter.drawEllipse(position, half, half);
}

} // namespace

SeriesStyle styleOf(const Chart &chart, int column, const PlotColours &plotColours)
{
    const Series &series = chart.series(column);
    const auto colour = [&](ColourRole role) { return chart.seriesColour(column, role, plotColours); };
    const bool shown = series.SeriesMarker.Show || series.SeriesMarker.Auto;
    SeriesStyle style;
    style.pen = colour(ColourRole::Pen);
    style.fill = colour(ColourRole::Brush);
    style.markerPen = colour(ColourRole::MarkerPen);
    style.markerFill = colour(ColourRole::MarkerFill);
    style.paper = plotColours.background;
    style.forPaper = plotColours.forPaper;
    style.penWidth = std::max(0.5, series.Pen.Width / double{TwipsPerPixel});
    style.penStyle = series.Pen.Style;
    style.marker = shown && series.Marker.Size > 0 ? series.Marker.Style : MarkerStyle::None;
    style.markerSize = series.Marker.Size / double{TwipsPerPixel};
    style.markerPenWidth = std::max(0.0, series.Marker.PenWidth / double{TwipsPerPixel});
    style.showLabels = series.DataPointLabel.LocationType == LabelLocation::AbovePoint;
    style.hatch = Hatches[static_cast<std::size_t>(column - 1) % Hatches.size()];
    return style;
}

QColor mixed(const QColor &colour, const QColor &other, double part)
{
    const auto channel = [part](int one, int two) { return static_cast<int>(std::lround(one + (two - one) * part)); };
    return {channel(colour.red(), other.red()), channel(colour.green(), other.green()), channel(colour.blue(), other.blue()),
            colour.alpha()};
}

void drawRun(QPainter &painter, const SeriesStyle &style, const QPolygonF &run, const QRectF &exposed)
{
    if (style.penStyle == PenStyle::NoLine || run.size() < 2) {
        return;
    }
    const std::vector<double> pattern = patternOf(style.penStyle);
    const double left = exposed.left() - style.penWidth;
    const double right = exposed.right() + style.penWidth;
    std::vector<QLineF> strokes;
    std::optional<Dasher> dasher;
    if (!pattern.empty()) {
        dasher.emplace(pattern, std::max(style.penWidth, 1.5));
    }
    for (qsizetype corner = 1; corner < run.size(); ++corner) {
        const QLineF piece(run[corner - 1], run[corner]);
        const bool hidden = std::max(piece.x1(), piece.x2()) < left || std::min(piece.x1(), piece.x2()) > right;
        if (!hidden && dasher) {
            dasher->add(strokes, piece);
        } else if (!hidden) {
            strokes.push_back(piece);
        } else if (dasher) {
            dasher->skip(piece.length());
        }
    }
    // Round caps close the corners of wide lines; on thin ones they would only cost time.
    const bool closeCorners = !dasher && style.penWidth > 2.0;
    painter.setPen(QPen(style.pen, style.penWidth, Qt::SolidLine, closeCorners ? Qt::RoundCap : Qt::FlatCap));
    painter.drawLines(strokes.data(), static_cast<int>(strokes.size()));
}

void drawMarkers(QPainter &painter, const SeriesStyle &style, const std::vector<QPointF> &positions)
{
    if (style.marker == MarkerStyle::None) {
        return;
    }
    if (style.marker == MarkerStyle::ThreeDimensionalBall) {
        std::for_each(positions.begin(), positions.end(), [&](const QPointF &position) { drawBall(painter, style, position); });
        return;
    }
    const double half = style.markerSize / 2.0;
    painter.setPen(style.markerPenWidth > 0.0
                       ? QPen(style.markerPen, style.markerPenWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin)
                       : QPen(Qt::NoPen));
    painter.setBrush(isOpen(style.marker) ? style.paper : style.markerFill);
    const QPolygonF polygon = markerPolygon(style.marker, half);
    const std::vector<QLineF> strokes = markerStrokes(style.marker, half);
    std::vector<QLineF> lines;
    for (const QPointF &position : positions) {
        if (!polygon.isEmpty()) {
            painter.drawConvexPolygon(polygon.translated(position));
        } else if (strokes.empty()) {
            painter.drawEllipse(position, half, half);
        }
        std::transform(strokes.begin(), strokes.end(), std::back_inserter(lines),
                       [&position](const QLineF &stroke) { return stroke.translated(position); });
    }
    painter.drawLines(lines.data(), static_cast<int>(lines.size()));
}

void addHatch(std::vector<QLineF> &lines, const SeriesStyle &style, const QRectF &area)
{
    const Hatch hatch = style.hatch;
    const double gap = style.forPaper ? PaperHatchStep : HatchStep;
    const auto eachStep = [gap](double from, double to, const auto &add) {
        for (double step = std::ceil(from / gap) * gap; step < to; step += gap) {
            add(step);
        }
    };
    if (hatch == Hatch::Level) {
        eachStep(area.top(), area.bottom(), [&](double y) { lines.emplace_back(area.left(), y, area.right(), y); });
    }
    if (hatch == Hatch::Rising || hatch == Hatch::Crossed) {
        eachStep(area.left() + area.top(), area.right() + area.bottom(), [&](double sum) {
            const double from = std::max(area.left(), sum - area.bottom());
            const double to = std::min(area.right(), sum - area.top());
            lines.emplace_back(from, sum - from, to, sum - to);
        });
    }
    if (hatch == Hatch::Falling || hatch == Hatch::Crossed) {
        eachStep(area.left() - area.bottom(), area.right() - area.top(), [&](double difference) {
            const double from = std::max(area.left(), difference + area.top());
            const double to = std::min(area.right(), difference + area.bottom());
            lines.emplace_back(from, from - difference, to, to - difference);
        });
    }
}

void drawHatch(QPainter &painter, const SeriesStyle &style, const std::vector<QLineF> &lines)
{
    // On paper a light area stays light, and a dark one dark: so that neighbours differ in grey.
    const bool lightOnPaper = style.forPaper && style.fill.lightness() > 150;
    const QColor colour = lightOnPaper ? mixed(style.fill, Qt::black, 0.35) : mixed(style.fill, style.paper, 0.45);
    painter.setPen(QPen(colour, style.forPaper ? 0.8 : 1.0, Qt::SolidLine, Qt::FlatCap));
    painter.drawLines(lines.data(), static_cast<int>(lines.size()));
}

void fillArea(QPainter &painter, const SeriesStyle &style, const QPainterPath &area)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(style.fill);
    painter.drawPath(area);
    std::vector<QLineF> lines;
    addHatch(lines, style, area.boundingRect());
    if (!lines.empty()) {
        painter.save();
        painter.setClipPath(area, Qt::IntersectClip);
        drawHatch(painter, style, lines);
        painter.restore();
    }
}

} // namespace chart

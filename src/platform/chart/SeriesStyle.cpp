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

constexpr double TwipsPerPixel = 15.0;
constexpr double HatchStep = 6.0;
constexpr std::array Hatches = {Hatch::None, Hatch::Rising, Hatch::Falling, Hatch::Level, Hatch::Crossed};

/// Stroke and gap in turn, in widths of the pen; nothing is a whole line.
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

/// Cuts a run into strokes; the pattern goes on over the corners.
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
    /// As if the piece had been drawn.
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

void drawBall(QPainter &painter, const SeriesStyle &look, const QPointF &place)
{
    const double half = look.markerSize / 2.0;
    QRadialGradient shine(place - QPointF(half, half) * 0.35, half * 1.4);
    shine.setColorAt(0.0, mixed(look.markerFill, Qt::white, 0.75));
    shine.setColorAt(1.0, mixed(look.markerFill, Qt::black, 0.25));
    painter.setPen(Qt::NoPen);
    painter.setBrush(shine);
    painter.drawEllipse(place, half, half);
}

} // namespace

SeriesStyle lookOf(const Chart &chart, int column, const PlotColours &plotColours)
{
    const Series &series = chart.series(column);
    const auto colour = [&](ColourRole role) { return chart.seriesColour(column, role, plotColours); };
    const bool shown = series.SeriesMarker.Show || series.SeriesMarker.Auto;
    SeriesStyle look;
    look.pen = colour(ColourRole::Pen);
    look.fill = colour(ColourRole::Brush);
    look.markerPen = colour(ColourRole::MarkerPen);
    look.markerFill = colour(ColourRole::MarkerFill);
    look.paper = plotColours.background;
    look.penWidth = std::max(0.5, series.Pen.Width / TwipsPerPixel);
    look.penStyle = series.Pen.Style;
    look.marker = shown && series.Marker.Size > 0 ? series.Marker.Style : MarkerStyle::None;
    look.markerSize = series.Marker.Size / TwipsPerPixel;
    look.markerPenWidth = std::max(0.0, series.Marker.PenWidth / TwipsPerPixel);
    look.showLabels = series.DataPointLabel.LocationType == LabelLocation::AbovePoint;
    look.hatch = Hatches[static_cast<std::size_t>(column - 1) % Hatches.size()];
    return look;
}

QColor mixed(const QColor &colour, const QColor &other, double part)
{
    const auto channel = [part](int one, int two) { return static_cast<int>(std::lround(one + (two - one) * part)); };
    return {channel(colour.red(), other.red()), channel(colour.green(), other.green()), channel(colour.blue(), other.blue()),
            colour.alpha()};
}

void drawRun(QPainter &painter, const SeriesStyle &look, const QPolygonF &run, const QRectF &exposed)
{
    if (look.penStyle == PenStyle::NoLine || run.size() < 2) {
        return;
    }
    const std::vector<double> pattern = patternOf(look.penStyle);
    const double left = exposed.left() - look.penWidth;
    const double right = exposed.right() + look.penWidth;
    std::vector<QLineF> strokes;
    std::optional<Dasher> dasher;
    if (!pattern.empty()) {
        dasher.emplace(pattern, std::max(look.penWidth, 1.5));
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
    // Round ends close the corners of broad lines; on thin ones they would only cost time.
    const bool closeCorners = !dasher && look.penWidth > 2.0;
    painter.setPen(QPen(look.pen, look.penWidth, Qt::SolidLine, closeCorners ? Qt::RoundCap : Qt::FlatCap));
    painter.drawLines(strokes.data(), static_cast<int>(strokes.size()));
}

void drawMarkers(QPainter &painter, const SeriesStyle &look, const std::vector<QPointF> &places)
{
    if (look.marker == MarkerStyle::None) {
        return;
    }
    if (look.marker == MarkerStyle::ThreeDimensionalBall) {
        std::for_each(places.begin(), places.end(), [&](const QPointF &place) { drawBall(painter, look, place); });
        return;
    }
    const double half = look.markerSize / 2.0;
    painter.setPen(look.markerPenWidth > 0.0
                       ? QPen(look.markerPen, look.markerPenWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin)
                       : QPen(Qt::NoPen));
    painter.setBrush(isOpen(look.marker) ? look.paper : look.markerFill);
    const QPolygonF polygon = markerPolygon(look.marker, half);
    const std::vector<QLineF> strokes = markerStrokes(look.marker, half);
    std::vector<QLineF> lines;
    for (const QPointF &place : places) {
        if (!polygon.isEmpty()) {
            painter.drawConvexPolygon(polygon.translated(place));
        } else if (strokes.empty()) {
            painter.drawEllipse(place, half, half);
        }
        std::transform(strokes.begin(), strokes.end(), std::back_inserter(lines),
                       [&place](const QLineF &stroke) { return stroke.translated(place); });
    }
    painter.drawLines(lines.data(), static_cast<int>(lines.size()));
}

void addHatch(std::vector<QLineF> &lines, Hatch hatch, const QRectF &face)
{
    const auto eachStep = [](double from, double to, const auto &add) {
        for (double step = std::ceil(from / HatchStep) * HatchStep; step < to; step += HatchStep) {
            add(step);
        }
    };
    if (hatch == Hatch::Level) {
        eachStep(face.top(), face.bottom(), [&](double y) { lines.emplace_back(face.left(), y, face.right(), y); });
    }
    if (hatch == Hatch::Rising || hatch == Hatch::Crossed) {
        eachStep(face.left() + face.top(), face.right() + face.bottom(), [&](double sum) {
            const double from = std::max(face.left(), sum - face.bottom());
            const double to = std::min(face.right(), sum - face.top());
            lines.emplace_back(from, sum - from, to, sum - to);
        });
    }
    if (hatch == Hatch::Falling || hatch == Hatch::Crossed) {
        eachStep(face.left() - face.bottom(), face.right() - face.top(), [&](double difference) {
            const double from = std::max(face.left(), difference + face.top());
            const double to = std::min(face.right(), difference + face.bottom());
            lines.emplace_back(from, from - difference, to, to - difference);
        });
    }
}

void drawHatch(QPainter &painter, const SeriesStyle &look, const std::vector<QLineF> &lines)
{
    painter.setPen(QPen(mixed(look.fill, look.paper, 0.45), 1.0, Qt::SolidLine, Qt::FlatCap));
    painter.drawLines(lines.data(), static_cast<int>(lines.size()));
}

void drawFace(QPainter &painter, const SeriesStyle &look, const QPainterPath &face)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.fill);
    painter.drawPath(face);
    std::vector<QLineF> lines;
    addHatch(lines, look.hatch, face.boundingRect());
    if (!lines.empty()) {
        painter.save();
        painter.setClipPath(face, Qt::IntersectClip);
        drawHatch(painter, look, lines);
        painter.restore();
    }
}

} // namespace chart
